#include "report/ReportCommand.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "output/Text.h"
#include "report/Page.h"
#include "report/ReportData.h"
#include "summary/Document.h"
#include "support/Json.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::report {
namespace {

using test_support::Json;
using test_support::parseJson;
using test_support::readBytes;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;

const std::string kSample = UMP_SOURCE_DIR "/examples/documents/small/update.json";
const std::string kProductData = UMP_SOURCE_DIR "/examples/documents/small/product-data";

constexpr int kFailed = static_cast<int>(command::ExitCode::kFailed);
constexpr int kTrouble = static_cast<int>(command::ExitCode::kTrouble);

std::string expectedPage(const std::optional<std::u16string>& productData) {
  install::update_metadata_parser::DiagnosisOptions options;
  options.productData = productData;
  return makePage(makeReportData(
      u"update.json", summary::Document({output::toUtf16(kSample), productData}).gatherContents(),
      install::update_metadata_parser::diagnose(readBytes(kSample), options)));
}

class Report : public ::testing::Test {
 protected:
  Report() { around_.folder = folder_.nativePath(); }

  TemporaryFolder folder_;
  ToolSurroundings around_;
};

TEST_F(Report, IsWrittenToAFileSilently) {
  EXPECT_EQ(
      runTool({"report", kSample, "-o", "page.html", "--product-data", kProductData}, around_),
      (ToolRun{0, "", ""}));
  EXPECT_EQ(readBytes(folder_.nativePath("page.html")),
            expectedPage(output::toUtf16(kProductData)));
}

TEST_F(Report, IsWrittenToStandardOutput) {
  EXPECT_EQ(runTool({"report", "--output=-", kSample}, around_),
            (ToolRun{0, expectedPage(std::nullopt), ""}));
}

// As in a shell's process substitution.
TEST_F(Report, OfAPipeReadsItOnce) {
  folder_.makeFifo("update.json");
  std::thread writer(
      [&] { std::ofstream(folder_.nativePath("update.json")) << readBytes(kSample); });
  const ToolRun run = runTool({"report", "update.json", "-o", "-"}, around_);
  writer.join();
  EXPECT_EQ(run, (ToolRun{0, expectedPage(std::nullopt), ""}));
}

// For the totals and for each product.
TEST_F(Report, HasTheFiguresOfShow) {
  const std::string realistic = UMP_SOURCE_DIR "/examples/documents/realistic/";
  for (const std::string& file : {kSample, realistic + "update.json"}) {
    const auto shown = parseJson(runTool({"show", file, "--format", "json"}, around_).out);
    const std::string page = runTool({"report", file, "-o", "-"}, around_).out;
    const std::string begin = "id=\"contents\">";
    const std::size_t data = page.find(begin) + begin.size();
    const auto reported = parseJson(page.substr(data, page.find("</script>", data) - data));
    const auto expectSame = [](const Json& one, const Json& other) {
      for (const char* count : {"packagesToDelete", "packagesToExtract"}) {
        EXPECT_EQ(one[count], other[count]) << count;
      }
      for (const char* sum : {"bytesToFetch", "bytesUnpacked", "bytesDeleted"}) {
        EXPECT_EQ(one[sum].dump(), other[sum].get<std::string>()) << sum;
      }
    };
    expectSame(shown["totals"], reported["totals"]);
    EXPECT_EQ(shown["totals"]["filesToDelete"], reported["totals"]["filesToDelete"]);
    for (const Json& product : shown["products"]) {
      for (const Json& other : reported["products"]) {
        if (product["name"] == other["name"]) {
          expectSame(product, other);
        }
      }
    }
    EXPECT_EQ(shown["products"].size(), reported["products"].size());
  }
}

TEST_F(Report, OfADocumentThatDoesNotLoadIsNotWritten) {
  folder_.writeFile("page.html", "as it was");
  EXPECT_EQ(runTool({"report", "none.json", "-o", "page.html"}, around_),
            (ToolRun{kTrouble, "",
                     "Update MetaData Json file does not exist \n"
                     "update-metadata: 'none.json' could not be loaded; check the path\n"}));
  EXPECT_EQ(readBytes(folder_.nativePath("page.html")), "as it was");
}

struct ReplacedInput {
  const char* name;
  std::vector<std::string> arguments;  ///< the last one is the output
  const char* input;                   ///< which input that is
};

std::ostream& operator<<(std::ostream& out, const ReplacedInput& row) {
  return out << row.name;
}

class ReplacedInputs : public Report, public ::testing::WithParamInterface<ReplacedInput> {};

TEST_P(ReplacedInputs, AreRejectedAndUnchanged) {
  const std::string document = readBytes(kSample);
  const std::string table = readBytes(kProductData + "/products.tsv");
  folder_.writeFile("in.json", document);
  folder_.writeFile("data/products.tsv", table);
  folder_.makeLink("link.json", "in.json");
  std::filesystem::create_hard_link(folder_.nativePath("in.json"),
                                    folder_.nativePath("other-name.json"));
  around_.inFile = folder_.nativePath("in.json");
  std::vector<std::string> arguments = GetParam().arguments;
  const std::string output = arguments.back();
  arguments.insert(arguments.end() - 1, "--output");
  arguments.insert(arguments.begin(), "report");
  EXPECT_EQ(runTool(arguments, around_),
            (ToolRun{kTrouble, "",
                     "update-metadata: '" + output + "' is " + GetParam().input +
                         ", which the page would replace; nothing was changed: choose "
                         "another file with --output\n"}));
  EXPECT_EQ(readBytes(folder_.nativePath("in.json")), document);
  EXPECT_EQ(readBytes(folder_.nativePath("data/products.tsv")), table);
}

const ReplacedInput kReplacedInputs[] = {
    {"Document", {"in.json", "in.json"}, "the document"},
    {"DocumentByAnotherPath", {"in.json", "data/../in.json"}, "the document"},
    {"DocumentByALink", {"in.json", "link.json"}, "the document"},
    {"LinkedDocument", {"link.json", "in.json"}, "the document"},
    {"DocumentByAnotherName", {"in.json", "other-name.json"}, "the document"},
    {"StandardInput", {"-", "in.json"}, "the document"},
    {"TableInItsFolder",
     {"in.json", "--product-data", "data", "data/products.tsv"},
     "the product data"},
    {"Table",
     {"in.json", "--product-data", "data/products.tsv", "data/products.tsv"},
     "the product data"},
};
INSTANTIATE_TEST_SUITE_P(Inputs, ReplacedInputs, ::testing::ValuesIn(kReplacedInputs),
                         [](const auto& row) { return row.param.name; });

struct UnwritablePage {
  const char* name;
  std::string output;
  std::string shown;  ///< the output in the message
  const char* reason;
};

std::ostream& operator<<(std::ostream& out, const UnwritablePage& row) {
  return out << row.name;
}

class UnwritablePages : public Report, public ::testing::WithParamInterface<UnwritablePage> {};

TEST_P(UnwritablePages, AreReportedInOneLine) {
  folder_.makeLink("link.html", "nowhere");
  folder_.makeLink("circle.html", "circle.html");
  EXPECT_EQ(
      runTool({"report", kSample, "-o", GetParam().output}, around_),
      (ToolRun{kFailed, "",
               "update-metadata: '" + GetParam().shown +
                   "' could not be written: " + GetParam().reason +
                   "; nothing was changed: name another file, or '-' for standard output\n"}));
  EXPECT_EQ(std::filesystem::read_symlink(folder_.nativePath("link.html")), "nowhere");
}

const std::string kLongName = std::string(300, 'n');

const UnwritablePage kUnwritablePages[] = {
    {"WithoutAFolder", "missing/page.html", "missing/page.html",
     "its folder cannot be opened: No such file or directory"},
    {"AtADanglingLink", "link.html", "link.html",
     "it is a dangling link: No such file or directory"},
    {"AtALinkToItself", "circle.html", "circle.html",
     "the file cannot be accessed: Too many levels of symbolic links"},
    {"WithALongName", kLongName, kLongName, "the file cannot be accessed: File name too long"},
    {"WithALongOddName", "\x1B" + kLongName, "<U+001B>" + kLongName,
     "the file cannot be accessed: File name too long"},
    {"AtAFolder", ".", ".", "the file cannot be written: Is a directory"},
    {"AtADevice", "/dev/null", "/dev/null",
     "only a regular file can be replaced: Invalid argument"},
};
INSTANTIATE_TEST_SUITE_P(Pages, UnwritablePages, ::testing::ValuesIn(kUnwritablePages),
                         [](const auto& row) { return row.param.name; });

TEST_F(Report, DoesNotReplaceAPipe) {
  around_.isOutClosedPipe = true;
  EXPECT_EQ(runTool({"report", kSample, "-o", "/dev/stdout"}, around_),
            (ToolRun{kFailed, "",
                     "update-metadata: '/dev/stdout' could not be written: only a regular "
                     "file can be replaced: Invalid argument; nothing was changed: name another "
                     "file, or '-' for standard output\n"}));
}

}  // namespace
}  // namespace update_metadata_tool::report
