#include "command/ExitCode.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install/update_metadata_parser/Version.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::query {
namespace {

using test_support::refusedRun;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using test_support::WrongUsage;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr int kFailed = static_cast<int>(command::ExitCode::kFailed);

const std::string kGoodDocument =
    R"({"metadata":{"arch":"","base":null,"target":null},)"
    R"("components":{"c":{"delete":{},"extract":{"e":{"size":1,"uncompressedBytes":1}}}},)"
    R"("products":{"p":{"delete":[],"extract":["c"]}},"componentsWithFilesDeleted":null})";

/// A folder with a good document, a bad one and bad product data.
class QueryFailure : public ::testing::Test {
 protected:
  QueryFailure() {
    folder_.writeFile("good.json", kGoodDocument);
    folder_.makeFolder("folder");
    folder_.makeSocket("socket");
    folder_.writeFile("bad-data/products.tsv", "header\ntoo few\n");
    around_.folder = folder_.nativePath();
  }

  TemporaryFolder folder_;
  ToolSurroundings around_;
};

// --- documents ------------------------------------------------------------------------------

struct RefusedDocument {
  const char* name;
  const char* file;
  std::string text;  ///< written to the file if not empty
  std::vector<std::string> options;
  const char* err;
};

std::ostream& operator<<(std::ostream& out, const RefusedDocument& row) {
  return out << row.name;
}

class RefusedDocuments : public QueryFailure,
                         public ::testing::WithParamInterface<RefusedDocument> {};

TEST_P(RefusedDocuments, LeaveTheReasonThenTheFileAndWhatToDo) {
  const RefusedDocument& row = GetParam();
  if (!row.text.empty()) {
    folder_.writeFile(row.file, row.text);
  }
  std::vector<std::string> arguments = {"query", row.file};
  arguments.insert(arguments.end(), row.options.begin(), row.options.end());
  EXPECT_EQ(runTool(arguments, around_), (ToolRun{kFailed, "", row.err}));
}

const RefusedDocument kRefusedDocuments[] = {
    {"MissingFile",
     "none.json",
     "",
     {},
     "Update MetaData Json file does not exist \n"
     "update-metadata: 'none.json' could not be loaded; check the path\n"},
    {"Folder",
     "folder",
     "",
     {},
     "Error opening Update MetaData Json File\n"
     "update-metadata: 'folder' could not be loaded; it is there, but is no file that can be read: "
     "check what it is and its permissions\n"},
    {"Socket",
     "socket",
     "",
     {"--format", "json"},
     "Error opening Update MetaData Json File\n"
     "update-metadata: 'socket' could not be loaded; it is there, but is no file that can be read: "
     "check what it is and its permissions\n"},
    {"FinalLineFeed",
     "x.json",
     kGoodDocument + '\n',
     {"--format", "json"},
     "Error while parsing x.json\n"
     "update-metadata: 'x.json' could not be loaded; its text is not one JSON object; nothing "
     "may come before or after the object, not even a byte-order mark or a final line feed; "
     "'update-metadata lint x.json' shows where\n"},
    {"NoObject",
     "x\xC3\xBC.json",
     "[]",
     {},
     "Error while parsing x\xC3\xBC.json\n"
     "update-metadata: 'x\xC3\xBC.json' could not be loaded; its text is not one JSON object; "
     "nothing may come before or after the object, not even a byte-order mark or a final line "
     "feed; 'update-metadata lint x\xC3\xBC.json' shows where\n"},
    {"MissingSection",
     "x.json",
     R"({"metadata":{"arch":"","base":null,"target":null},"components":null,"products":null})",
     {},
     "map::at\n"
     "update-metadata: 'x.json' could not be loaded; add the section "
     "\"componentsWithFilesDeleted\" at the top of the document; 'update-metadata lint x.json' "
     "shows where\n"},
    {"MissingMember",
     "x.json",
     R"({"metadata":{}})",
     {},
     "Invalid data provided for 'arch'\n"
     "update-metadata: 'x.json' could not be loaded; correct the document: that member is missing "
     "somewhere or has a value of the wrong kind; 'update-metadata lint x.json' shows where\n"},
    {"NullMember",
     "x.json",
     R"({"metadata":{"arch":null}})",
     {},
     "invalid conversion: null to string\n"
     "update-metadata: 'x.json' could not be loaded; correct the document: some value, maybe a "
     "missing one, has the first kind and must have the second; 'update-metadata lint x.json' "
     "shows where\n"},
    {"BadProductData",
     "good.json",
     "",
     {"--product-data", "bad-data"},
     "bad-data/products.tsv:2: expected 4 tab-separated fields, found 1\n"
     "update-metadata: 'good.json' was loaded, but the questions about it could not be answered; "
     "check the product data at 'bad-data'\n"},
    {"ControlCharactersInItsName",
     "a\033[31m\nb",
     "",
     {},
     "Update MetaData Json file does not exist \n"
     "update-metadata: 'a<U+001B>[31m<U+000A>b' could not be loaded; check the path\n"},
};
INSTANTIATE_TEST_SUITE_P(Documents, RefusedDocuments, ::testing::ValuesIn(kRefusedDocuments),
                         [](const auto& row) { return row.param.name; });

// The first line is the standard library's.
TEST_F(QueryFailure, OfADocumentThatCannotBeReadToItsEndIsToldFromOneThatCannotBeOpened) {
  const ToolRun run = runTool({"query", "/proc/self/mem"}, around_);
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_EQ(run.out, "");
  EXPECT_THAT(run.err,
              EndsWith("Input/output error\n"
                       "update-metadata: '/proc/self/mem' could not be loaded; it could be "
                       "opened, but not be read to its end: check the device that it is "
                       "on\n"));
}

// --- usage ----------------------------------------------------------------------------------

class WrongUsages : public QueryFailure, public ::testing::WithParamInterface<WrongUsage> {};

TEST_P(WrongUsages, EndWithTheCodeTwoAndAPointerToTheHelp) {
  EXPECT_EQ(runTool(GetParam().arguments, around_), refusedRun(GetParam()));
}

const WrongUsage kWrongUsages[] = {
    {"NoCommand", {}, "A subcommand is required"},
    {"UnknownCommand", {"ask"}, "The following argument was not expected: ask"},
    {"MistypedCommand",
     {"qurey"},
     "The following argument was not expected: qurey\nDid you mean 'query'?"},
    {"MistypedCommandWithArguments",
     {"--color", "Lnit", "good.json"},
     "The following arguments were not expected: good.json Lnit --color\nDid you mean 'lint'?"},
    {"ControlsInAnArgument",
     {"query", "good.json", "a\x1B[31m\n\x9B"},
     "The following argument was not expected: a<U+001B>[31m<U+000A><9B>"},
    {"NoFile", {"query"}, "FILE is required"},
    {"TwoFiles",
     {"query", "good.json", "other.json"},
     "The following argument was not expected: other.json"},
    {"UnknownOption",
     {"query", "good.json", "--colour"},
     "The following argument was not expected: --colour"},
    {"UnknownFormat",
     {"query", "good.json", "--format", "xml"},
     "--format: xml not in {text,json}"},
    {"FormatWithoutValue",
     {"query", "good.json", "--format"},
     "--format: 1 required FORMAT:{text,json} missing"},
    {"FileNotUtf8", {"query", "\xFF"}, "FILE: the argument is not UTF-8"},
    {"ProductDataNotUtf8",
     {"query", "good.json", "--product-data", "a\xC3"},
     "--product-data: the argument is not UTF-8"},
    {"BaseCodeNotUtf8",
     {"query", "good.json", "--base-code", "\xED\xA0\x80"},
     "--base-code: the argument is not UTF-8"},
};
INSTANTIATE_TEST_SUITE_P(Usages, WrongUsages, ::testing::ValuesIn(kWrongUsages),
                         [](const auto& row) { return row.param.name; });

TEST(Version, IsTheLibrarysOwn) {
  const std::string version = install::update_metadata_parser::version();
  EXPECT_EQ(runTool({"--version"}), (ToolRun{0, "update-metadata " + version + "\n", ""}));
}

TEST(Help, ShowsTheOptionsExamplesAndExitCodes) {
  const ToolRun help = runTool({"query", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_EQ(help.err, "");
  EXPECT_THAT(help.out, HasSubstr("Usage: update-metadata query [OPTIONS] FILE\n"));
  EXPECT_THAT(help.out, HasSubstr("Examples:\n"
                                  "  update-metadata query update.json\n"
                                  "  update-metadata query update.json --product-data "));
  EXPECT_THAT(help.out, HasSubstr("Exit status: 0 answered, 1 "));
  EXPECT_THAT(runTool({"--help"}).out, StartsWith("Answers questions about update metadata"));
}

// --- output and memory ----------------------------------------------------------------------

struct UnwrittenOutput {
  const char* name;
  std::vector<std::string> arguments;
};

std::ostream& operator<<(std::ostream& out, const UnwrittenOutput& row) {
  return out << row.name;
}

class UnwrittenOutputs : public QueryFailure,
                         public ::testing::WithParamInterface<UnwrittenOutput> {};

TEST_P(UnwrittenOutputs, AreNoticedOnAFullDisk) {
  around_.outFile = "/dev/full";
  EXPECT_EQ(runTool(GetParam().arguments, around_),
            (ToolRun{kFailed, "",
                     "update-metadata: standard output could not be written: No space left on "
                     "device; what was written is not complete\n"}));
}

TEST_P(UnwrittenOutputs, AreNoticedOnAPipeThatNobodyReads) {
  around_.isOutClosedPipe = true;
  EXPECT_EQ(runTool(GetParam().arguments, around_),
            (ToolRun{kFailed, "",
                     "update-metadata: standard output could not be written: Broken pipe; what was "
                     "written is not complete\n"}));
}

const UnwrittenOutput kUnwrittenOutputs[] = {
    {"Text", {"query", "good.json"}},
    {"Json", {"query", "good.json", "--format=json"}},
    {"Version", {"--version"}},
    {"Help", {"query", "--help"}},
};
INSTANTIATE_TEST_SUITE_P(Outputs, UnwrittenOutputs, ::testing::ValuesIn(kUnwrittenOutputs),
                         [](const auto& row) { return row.param.name; });

// The address sanitizer needs more address space than any useful limit. GCC and Clang tell of it in
// two ways.
#if defined(__has_feature)
#define UMP_HAS_FEATURE(feature) __has_feature(feature)
#else
#define UMP_HAS_FEATURE(feature) 0
#endif
#if !defined(__SANITIZE_ADDRESS__) && !UMP_HAS_FEATURE(address_sanitizer)

TEST_F(QueryFailure, OfADocumentTooLargeForTheMemoryIsReported) {
  constexpr std::size_t kMebibyte = std::size_t{1} << 20U;
  around_.memory = 128 * kMebibyte;
  EXPECT_EQ(runTool({"query", "/dev/zero"}, around_),
            (ToolRun{kFailed, "",
                     "std::bad_alloc\n"
                     "update-metadata: '/dev/zero' could not be loaded; there is not enough memory "
                     "for it\n"}));
}

#endif

}  // namespace
}  // namespace update_metadata_tool::query
