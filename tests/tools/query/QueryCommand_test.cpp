#include "query/QueryCommand.h"

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::query {
namespace {

using test_support::kRealistic;
using test_support::kRealisticProducts;
using test_support::kSmall;
using test_support::kSmallProducts;
using test_support::runOnDocument;
using test_support::runOnSamples;
using test_support::runTool;
using test_support::SampleRun;
using test_support::SampleRuns;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;

ToolRun answered(const std::string& out) {
  return {0, out, ""};
}

TEST_P(SampleRuns, PrintTheStoredAnswers) {
  expectStored(GetParam());
}

const SampleRun kSampleQuestions[] = {
    {"SmallForPeople", {"query", kSmall, "--product-data", kSmallProducts}, "80", "small.txt"},
    {"SmallForPrograms",
     {"query", kSmall, "--product-data", kSmallProducts, "--format", "json"},
     "80",
     "small.json"},
    {"ProductDataNamedByTheFile",
     {"query", kSmall, "--product-data", kSmallProducts + "/products.tsv", "--format=json"},
     "80",
     "small.json"},
    {"RealisticForPeople",
     {"query", kRealistic, "--product-data", kRealisticProducts, "--format", "text"},
     "80",
     "realistic.txt"},
    {"RealisticForPrograms",
     {"query", "--format", "json", "--product-data", kRealisticProducts, "--", kRealistic},
     "80",
     "realistic.json"},
    {"NamesForCodesForPeople", {"query", kRealistic}, "80", "realistic-names.txt"},
    {"NamesForCodesForPrograms",
     {"query", kRealistic, "--format", "json"},
     "80",
     "realistic-names.json"},
    {"OneCodeForPeople",
     {"query", kRealistic, "--product-data", kRealisticProducts, "--base-code", "FA"},
     "80",
     "realistic-one-code.txt"},
    {"OneCodeForPrograms",
     {"query", kRealistic, "--product-data", kRealisticProducts, "--base-code", "FA",
      "--format=json"},
     "80",
     "realistic-one-code.json"},
};
INSTANTIATE_TEST_SUITE_P(Samples, SampleRuns, ::testing::ValuesIn(kSampleQuestions),
                         [](const auto& row) { return row.param.name; });

// --- single properties of the answers -------------------------------------------------------

// A document with both releases; `sections` are its last three members.
std::string makeDocument(const std::string& sections) {
  const std::string release =
      "{\"zelvan_version\":\"\",\"date\":\"\",\"version\":\"V\",\"prerelease\":true,"
      "\"release\":\"F\",\"checksum\":\"\",\"description\":\"\",\"update\":200}";
  return "{\"metadata\":{\"arch\":\"\",\"base\":" + release + ",\"target\":" + release + "}," +
         sections + "}";
}

const std::string kNoSections =
    R"("components":null,"products":null,"componentsWithFilesDeleted":null)";

ToolRun ask(const std::string& document, std::vector<std::string> options,
            const std::string& products = "") {
  options.insert(options.begin(), "query");
  return runOnDocument(options, document, products);
}

TEST(QueryForPeople, PrintsNoneForEveryEmptyAnswer) {
  EXPECT_EQ(
      ask(R"({"metadata":{"arch":"","base":null,"target":null},)" + kNoSections + "}", {}, "\n"),
      answered("Base release:   none\n"
               "Target release: none, update level 0\n"
               "\nPackages to delete: none\n"
               "\nPackages to extract: none\n"
               "\nSizes of the packages to extract: none\n"
               "\nPackages with single files to delete: none\n"));
}

TEST(QueryForPrograms, WritesEveryMemberOfAnEmptyAnswer) {
  const std::string rest =
      R"("updateSizeForComponentsToExtract":{},"componentsWithFilesToDelete":{},)"
      R"("sha256":"bcb4950c920b2698ff55f3977d58f19058594f43810735808128aa8dab12f8af"})"
      "\n";
  const std::string releases = R"({"base":{"family":"F","version":"V"},)"
                               R"("target":{"family":"F","version":"V","updateLevel":-56},)";
  EXPECT_EQ(ask(makeDocument(kNoSections), {"--format", "json"}),
            answered(releases + R"("componentsToDelete":{},"componentsToExtract":{},)" + rest));
  ToolRun none = answered(releases + R"("componentsToDelete":[],"componentsToExtract":[],)" + rest);
  none.err =
      "update-metadata: note: 'update.json' has no product with the base code 'none'; check "
      "--base-code\n";
  EXPECT_EQ(ask(makeDocument(kNoSections), {"--format", "json", "--base-code", "none"}), none);
}

TEST(QueryForOneProduct, NotesAnUnknownCodeWithTheNearestOnes) {
  const ToolRun run =
      runOnSamples({"query", kSmall, "--product-data", kSmallProducts, "--base-code=FX"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.err,
            "update-metadata: note: 'small/update.json' has no product with the base code 'FX'; "
            "the nearest in the document: FE (Fernlight Editor), FV (Fernlight Viewer); check "
            "--base-code\n");
  const ToolRun byName = runOnSamples({"query", kSmall, "--base-code=Fernlight Veiwer"});
  EXPECT_EQ(byName.err,
            "update-metadata: note: 'small/update.json' has no product with the base code "
            "'Fernlight Veiwer'; the nearest in the document: Fernlight Viewer (Fernlight Viewer), "
            "Fernlight Editor (Fernlight Editor); check --base-code\n");
}

TEST(QueryForOneProduct, NotesNothingAboutAProductWithoutPackages) {
  const ToolRun run = ask(
      makeDocument(
          R"("components":{"c":{"delete":{},"extract":{}}},"products":{"P":{"delete":["c"],"extract":[]}},)"
          R"("componentsWithFilesDeleted":{})"),
      {"--base-code=P"});
  EXPECT_EQ(run.exitCode, 0) << run;
  EXPECT_EQ(run.err, "");
}

// Names with control characters, a quote, a backslash and a character beyond U+FFFF.
const std::string kOddNames =
    R"("components":{"c\u001b[2J":{"delete":{"":{"size":1}},"extract":{)"
    R"("\"\\\u0085\ud83d\ude00":{"size":-1,"uncompressedBytes":1e30}}}},)"
    R"("products":{"p\n":{"delete":["c\u001b[2J"],"extract":["c\u001b[2J"]}},)"
    R"("componentsWithFilesDeleted":{"d":{"e":{"size":2048,"files":["\u007f",""]}}})";

TEST(QueryForPeople, ShowsControlCharactersAsCodes) {
  EXPECT_EQ(
      ask(makeDocument(kOddNames), {}),
      answered("Base release:   F, version V\n"
               "Target release: F, version V, update level -56\n"
               "\nNote: no product data were given (--product-data DIR), so product names are used "
               "as base codes.\n"
               "\nPackages to delete: for 1 base code\n"
               "  p<U+000A>: 1 package\n"
               "    c<U+001B>[2J_\n"
               "\nPackages to extract: for 1 base code\n"
               "  p<U+000A>: 1 package\n"
               "    c<U+001B>[2J_\"\\<U+0085>\xF0\x9F\x98\x80\n"
               "\nSizes of the packages to extract: 1 package\n"
               "  c<U+001B>[2J_\"\\<U+0085>\xF0\x9F\x98\x80: -1 byte, unpacked "
               "-9223372036854775808 bytes (-8.0 EiB)\n"
               "\nPackages with single files to delete: 1 package, 2 files\n"
               "  d_e: 2048 bytes (2.0 KiB), 2 files\n"
               "    (empty)\n"
               "    <U+007F>\n"));
}

TEST(QueryForPrograms, EscapesOnlyWhatJsonRequiresAndWhatIsUnsafeForATerminal) {
  const std::string key = "\"c\\u001b[2J_\\\"\\\\\\u0085\xF0\x9F\x98\x80\"";
  EXPECT_EQ(
      ask(makeDocument(kOddNames), {"--format", "json", "--base-code", "p\n"}),
      answered(R"({"base":{"family":"F","version":"V"},)"
               R"("target":{"family":"F","version":"V","updateLevel":-56},)"
               R"("componentsToDelete":["c\u001b[2J_"],"componentsToExtract":[)" +
               key + R"(],"updateSizeForComponentsToExtract":{)" + key +
               R"(:{"size":-1,"uncompressedBytes":-9223372036854775808}},)"
               R"("componentsWithFilesToDelete":{"d_e":{"size":2048,"files":["","\u007f"]}},)"
               R"("sha256":"c63f59a02f8a88e18ee28827cb466e9d4620e92a48c4c74960684cad5660dcb4"})"
               "\n"));
}

const std::string kTwoProducts =
    R"("components":{"c":{"delete":{},"extract":{"e":{"size":1,"uncompressedBytes":1}}}},)"
    R"("products":{"p":{"delete":[],"extract":["c"]},"q":{"delete":[],"extract":["c"]}},)"
    R"("componentsWithFilesDeleted":{})";

TEST(QueryForPeople, NotesThatTheProductDataDoNotContainAProduct) {
  EXPECT_EQ(ask(makeDocument(kTwoProducts), {}, "\n"),
            answered("Base release:   F, version V\n"
                     "Target release: F, version V, update level -56\n"
                     "\nNote: the product data at . do not contain every product of the "
                     "document. A missing product has an empty base code;\n"
                     "if there are several, only the first is listed.\n"
                     "\nPackages to delete: none\n"
                     "\nPackages to extract: for 1 base code\n"
                     "  (empty): 1 package\n"
                     "    c_e\n"
                     "\nSizes of the packages to extract: 1 package\n"
                     "  c_e: 1 byte, unpacked 1 byte\n"
                     "\nPackages with single files to delete: none\n"));
}

// The text of one member of an answer.
std::string takeMember(const ToolRun& run, const std::string& name, const std::string& next) {
  const std::size_t begin = run.out.find('"' + name + "\":");
  const std::size_t end = run.out.find(",\"" + next + "\":");
  return begin < end && end < run.out.size() ? run.out.substr(begin, end - begin) : run.err;
}

struct BaseCode {
  const char* name;
  std::vector<std::string> options;
  const char* extracted;
};

std::ostream& operator<<(std::ostream& out, const BaseCode& row) {
  return out << row.name;
}

class BaseCodeOption : public ::testing::TestWithParam<BaseCode> {};

TEST_P(BaseCodeOption, IsUsedVerbatim) {
  const std::string sections =
      R"("components":{"c":{"delete":{},"extract":{"e":{"size":1,"uncompressedBytes":1}}}},)"
      R"("products":{"":{"delete":[],"extract":["c"]},"[a,b]":{"delete":[],"extract":["c"]},)"
      R"("-x":{"delete":[],"extract":["c"]}},"componentsWithFilesDeleted":{})";
  std::vector<std::string> options = GetParam().options;
  options.push_back("--format=json");
  EXPECT_EQ(takeMember(ask(makeDocument(sections), options), "componentsToExtract",
                       "updateSizeForComponentsToExtract"),
            std::string("\"componentsToExtract\":") + GetParam().extracted);
}

const BaseCode kBaseCodes[] = {
    {"Missing", {}, R"({"":["c_e"],"-x":["c_e"],"[a,b]":["c_e"]})"},
    {"Empty", {"--base-code", ""}, R"(["c_e"])"},
    {"Brackets", {"--base-code", "[a,b]"}, R"(["c_e"])"},
    {"Dash", {"--base-code=-x"}, R"(["c_e"])"},
    {"Unknown", {"--base-code", "a"}, "[]"},
};
INSTANTIATE_TEST_SUITE_P(Codes, BaseCodeOption, ::testing::ValuesIn(kBaseCodes),
                         [](const auto& row) { return row.param.name; });

TEST(Query, AcceptsAPathThatIsNotAscii) {
  const TemporaryFolder folder;
  folder.writeFile("\xC3\xBC/\xF0\x9F\x97\xBA.json", makeDocument(kNoSections));
  ToolSurroundings around;
  around.folder = folder.nativePath();
  const ToolRun run = runTool({"query", "\xC3\xBC/\xF0\x9F\x97\xBA.json"}, around);
  EXPECT_EQ(run.exitCode, 0) << run;
}

}  // namespace
}  // namespace update_metadata_tool::query
