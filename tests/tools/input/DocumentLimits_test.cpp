#include "input/DocumentLimits.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::input {
namespace {

using install::update_metadata_parser::Limits;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;

std::vector<std::uint64_t> valuesOf(const Limits& limits) {
  return {limits.bytes, limits.packages, limits.files, limits.keyUnits};
}

TEST(LimitsOf, AFileHasNoneUnlessTheUserGivesThem) {
  EXPECT_EQ(valuesOf(limitsOf("update.json", {})),
            (std::vector<std::uint64_t>{kUnlimited, kUnlimited, kUnlimited, kUnlimited}));
}

TEST(LimitsOf, StandardInputHasThoseOfTheLibraryUnlessTheUserGivesOthers) {
  EXPECT_EQ(valuesOf(limitsOf("-", {})), valuesOf(Limits()));
}

TEST(LimitsOf, BytesAreLimitedAlone) {
  EXPECT_EQ(valuesOf(limitsOf("update.json", {7, std::nullopt})),
            (std::vector<std::uint64_t>{7, kUnlimited, kUnlimited, kUnlimited}));
}

TEST(LimitsOf, FilesAndKeysAreLimitedWithPackages) {
  EXPECT_EQ(valuesOf(limitsOf("-", {std::nullopt, 3})),
            (std::vector<std::uint64_t>{Limits().bytes, 3, 3, 3 * 26}));
  EXPECT_EQ(valuesOf(limitsOf("update.json", {std::nullopt, kUnlimited})),
            (std::vector<std::uint64_t>{kUnlimited, kUnlimited, kUnlimited, kUnlimited}));
}

// Two products name the component, so that three packages are named; one file is listed.
const std::string kLimitedDocument =
    R"({"metadata":{"arch":"x","base":null,"target":null},)"
    R"("components":{"c":{"delete":{"d":{"size":1}},)"
    R"("extract":{"e":{"size":1,"uncompressedBytes":1}}}},)"
    R"("products":{"p":{"delete":["c"],"extract":["c"]},"q":{"delete":[],"extract":["c"]}},)"
    R"("componentsWithFilesDeleted":{"c":{"f":{"size":1,"files":["/x"]}}}})";

struct LimitedUse {
  const char* name;
  std::vector<std::string> arguments;
  int exitCode;          ///< of a document that is rejected
  const char* outcome;   ///< what could not be done with the document
  const char* out = "";  ///< standard output of a document that is rejected
  bool countsPackages = true;
};

std::ostream& operator<<(std::ostream& out, const LimitedUse& row) {
  return out << row.name;
}

class LimitsOfUses : public ::testing::TestWithParam<LimitedUse> {
 protected:
  LimitsOfUses() {
    folder_.writeFile("update.json", kLimitedDocument);
    folder_.writeFile("empty.json",
                      R"({"metadata":{"arch":"","base":null,"target":null},"components":null,)"
                      R"("products":null,"componentsWithFilesDeleted":null})");
    folder_.writeFile("products.tsv", "\nP\tp\t1\t\nQ\tq\t2\t\n");
    around_.folder = folder_.nativePath();
    around_.inFile = folder_.nativePath("update.json");
  }

  // Runs the command on the document with an option more.
  ToolRun run(const std::string& file, const std::string& option, std::uint64_t limit) const {
    std::vector<std::string> arguments = GetParam().arguments;
    arguments.insert(arguments.end(), {file, option, std::to_string(limit)});
    return runTool(arguments, around_);
  }

  static ToolRun rejected(const std::string& file, const std::string& reason) {
    return {GetParam().exitCode, GetParam().out,
            "Update MetaData Json file " + reason + "\nupdate-metadata: '" + file +
                "' could not be " + GetParam().outcome +
                "; raise --limit-bytes or --limit-packages if you trust where it comes from\n"};
  }

  TemporaryFolder folder_;
  ToolSurroundings around_;
};

TEST_P(LimitsOfUses, RejectALongerFile) {
  for (const char* file : {"update.json", "-"}) {
    EXPECT_EQ(
        run(file, "--limit-bytes", kLimitedDocument.size() - 1),
        rejected(file, "has more than " + std::to_string(kLimitedDocument.size() - 1) + " bytes"));
    EXPECT_EQ(run(file, "--limit-bytes", kLimitedDocument.size()).err, "");
  }
}

TEST_P(LimitsOfUses, RejectMorePackages) {
  if (!GetParam().countsPackages) {
    EXPECT_EQ(run("update.json", "--limit-packages", 2).exitCode, 2);  // there is no such option
    return;
  }
  for (const char* file : {"update.json", "-"}) {
    EXPECT_EQ(run(file, "--limit-packages", 2), rejected(file, "names more than 2 packages"));
    EXPECT_EQ(run(file, "--limit-packages", 3).err, "");
  }
}

const LimitedUse kLimitedUses[] = {
    {"Query", {"query"}, 1, "loaded"},
    {"QueryWithProductData", {"query", "--product-data", "."}, 1, "loaded"},
    {"Show", {"show"}, 2, "loaded"},
    {"Plan", {"plan", "--product-data", "."}, 2, "loaded"},
    {"Diff", {"diff", "empty.json"}, 2, "loaded"},
    {"Report", {"report", "--output=-"}, 2, "loaded"},
    {"Lint", {"lint"}, 2, "loaded", "0 files checked, 1 could not be read\n", false},
    {"Fmt", {"fmt", "--check"}, 2, "read", "", false},
};
INSTANTIATE_TEST_SUITE_P(Commands, LimitsOfUses, ::testing::ValuesIn(kLimitedUses),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::input
