#include "command/ExitCode.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::query {
namespace {

using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using ::testing::EndsWith;

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

struct RejectedDocument {
  const char* name;
  const char* file;
  std::string text;  ///< written to the file if not empty
  std::vector<std::string> options;
  const char* err;
};

std::ostream& operator<<(std::ostream& out, const RejectedDocument& row) {
  return out << row.name;
}

class RejectedDocuments : public QueryFailure,
                          public ::testing::WithParamInterface<RejectedDocument> {};

TEST_P(RejectedDocuments, AreReportedByReasonThenByFileWithAdvice) {
  const RejectedDocument& row = GetParam();
  if (!row.text.empty()) {
    folder_.writeFile(row.file, row.text);
  }
  std::vector<std::string> arguments = {"query", row.file};
  arguments.insert(arguments.end(), row.options.begin(), row.options.end());
  EXPECT_EQ(runTool(arguments, around_), (ToolRun{kFailed, "", row.err}));
}

const RejectedDocument kRejectedDocuments[] = {
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
     "update-metadata: 'folder' could not be loaded; it exists but cannot be read as a file: check "
     "its type and permissions\n"},
    {"Socket",
     "socket",
     "",
     {"--format", "json"},
     "Error opening Update MetaData Json File\n"
     "update-metadata: 'socket' could not be loaded; it exists but cannot be read as a file: check "
     "its type and permissions\n"},
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
     "update-metadata: 'x.json' could not be loaded; correct the document: a value, possibly a "
     "missing one, has the first kind but must have the second; 'update-metadata lint x.json' "
     "shows where\n"},
    {"BadProductData",
     "good.json",
     "",
     {"--product-data", "bad-data"},
     "bad-data/products.tsv:2: expected 4 tab-separated fields, found 1\n"
     "update-metadata: 'good.json' was loaded but could not be queried; check the product data at "
     "'bad-data'\n"},
    {"ControlCharactersInItsName",
     "a\033[31m\nb",
     "",
     {},
     "Update MetaData Json file does not exist \n"
     "update-metadata: 'a<U+001B>[31m<U+000A>b' could not be loaded; check the path\n"},
};
INSTANTIATE_TEST_SUITE_P(Documents, RejectedDocuments, ::testing::ValuesIn(kRejectedDocuments),
                         [](const auto& row) { return row.param.name; });

// The first line comes from the standard library.
TEST_F(QueryFailure, OfADocumentThatCannotBeReadCompletelyDiffersFromOneThatCannotBeOpened) {
  const ToolRun run = runTool({"query", "/proc/self/mem"}, around_);
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_EQ(run.out, "");
  EXPECT_THAT(run.err,
              EndsWith("Input/output error\n"
                       "update-metadata: '/proc/self/mem' could not be loaded; it could be "
                       "opened but not read completely: check the device it is on\n"));
}

// --- memory --------------------------------------------------------------------------------

// The address sanitizer needs more address space than any useful limit. GCC and Clang indicate it
// in two ways.
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
