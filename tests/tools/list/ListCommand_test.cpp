#include "list/ListCommand.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::list {
namespace {

using test_support::kRealistic;
using test_support::kRealisticProducts;
using test_support::kSmall;
using test_support::kSmallProducts;
using test_support::runTool;
using test_support::SampleRun;
using test_support::SampleRuns;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using test_support::WrongUsage;

const SampleRun kSampleLists[] = {
    {"SmallAsFields", {"list", kSmall, "--product-data", kSmallProducts}, "80", "list-small.tsv"},
    {"SmallAsObjects",
     {"list", kSmall, "--product-data", kSmallProducts, "--format=ndjson"},
     "80",
     "list-small.ndjson"},
    {"TwoDocumentsWithoutProductData", {"list", kSmall, kRealistic}, "80", "list-both.tsv"},
    {"RealisticAsObjects",
     {"list", kRealistic, "--product-data", kRealisticProducts, "--format=ndjson"},
     "80",
     "list-realistic.ndjson"},
};
INSTANTIATE_TEST_SUITE_P(SampleLists, SampleRuns, ::testing::ValuesIn(kSampleLists),
                         [](const auto& row) { return row.param.name; });

// A document with one package to delete and what JSON would escape in its names.
const std::string kUnusual =
    R"({"metadata":{"arch":"a\tb","base":null,"target":null},)"
    R"("components":{"c\\\"":{"delete":{"\u001b\n":{"size":-1}},"extract":{}}},)"
    R"("products":{"":{"delete":["c\\\""],"extract":[]}},"componentsWithFilesDeleted":null})";

const std::string kHeading =
    "document\tbaseFamily\tbaseVersion\ttargetFamily\ttargetVersion\tupdateLevel\tarch\tside\t"
    "product\tbaseCode\tcomponent\tpackage\tkey\tsize\tuncompressedBytes\tline\tnamingLine\t"
    "inAllProducts\tinOneProduct\tinSizes\tinFiles\tsha256\n";

constexpr const char* kUnusualDigest =
    "ab2c7d9d9f8dc26a80e5981c313a6a6c8e9c13b7bab3c0e9cff1e60efd306aa6";

ToolRun listIn(const TemporaryFolder& folder, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "list");
  ToolSurroundings around;
  around.folder = folder.nativePath();
  return runTool(arguments, around);
}

TEST(ListAsFields, WritesNamesAsInJsonWithoutQuotationMarks) {
  const TemporaryFolder folder;
  folder.writeFile("update.json", kUnusual);
  EXPECT_EQ(listIn(folder, {"update.json"}),
            (ToolRun{0,
                     kHeading +
                         "update.json\t\t\t\t\t0\ta\\tb\tdelete\t\t\tc\\\\\"\t\\u001b\\n\t"
                         "c\\\\\"_\\u001b\\n\t-1\t\t1\t1\tused\tused\t\t\t" +
                         kUnusualDigest + '\n',
                     ""}));
}

TEST(List, SkipsADocumentThatDoesNotLoadAndExitsWithTwo) {
  const TemporaryFolder folder;
  folder.writeFile("bad.json", "{}");
  folder.writeFile("update.json", kUnusual);
  const ToolRun run = listIn(folder, {"bad.json", "update.json", "none.json"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, listIn(folder, {"update.json"}).out);
  EXPECT_EQ(run.err,
            "map::at\n"
            "update-metadata: 'bad.json' could not be loaded; add the section \"metadata\" at the "
            "top of the document; 'update-metadata lint bad.json' shows where\n"
            "Update MetaData Json file does not exist \n"
            "update-metadata: 'none.json' could not be loaded; check the path\n");
}

TEST(List, WritesTheSameWithSeveralProcesses) {
  const TemporaryFolder folder;
  folder.writeFile("bad.json", "{}");
  folder.writeFile("update.json", kUnusual);
  std::vector<std::string> arguments = {"update.json", "bad.json", "none.json", "update.json"};
  for (const char* format : {"--format=tsv", "--format=ndjson"}) {
    arguments.push_back(format);
    const ToolRun one = listIn(folder, arguments);
    for (const char* jobs : {"--jobs=2", "--jobs=3", "--jobs=7"}) {
      std::vector<std::string> inParallel = arguments;
      inParallel.push_back(jobs);
      EXPECT_EQ(listIn(folder, inParallel), one);
    }
    arguments.pop_back();
  }
}

TEST(List, WritesOnlyTheHeadingIfNothingIsNamed) {
  const TemporaryFolder folder;
  folder.writeFile("update.json",
                   R"({"metadata":{"arch":"","base":null,"target":null},"components":null,)"
                   R"("products":null,"componentsWithFilesDeleted":null})");
  EXPECT_EQ(listIn(folder, {"update.json"}), (ToolRun{0, kHeading, ""}));
  EXPECT_EQ(listIn(folder, {"update.json", "--format=ndjson"}), (ToolRun{0, "", ""}));
}

TEST(List, RejectsADocumentBeyondTheLimit) {
  const TemporaryFolder folder;
  folder.writeFile("update.json", kUnusual);
  const ToolRun run = listIn(folder, {"update.json", "--limit-bytes=10", "--format=ndjson"});
  EXPECT_EQ(run.exitCode, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err.substr(0, 45), "Update MetaData Json file has more than 10 by");
}

TEST(List, ReadsStandardInputAndNotesMissingProductData) {
  const TemporaryFolder folder;
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.inFile = folder.nativePath("update.json");
  folder.writeFile("update.json", kUnusual);
  const ToolRun run = runTool({"list", "-", "--format=ndjson", "--product-data=none"}, around);
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.out.substr(0, 15), "{\"document\":\"-\"");
  EXPECT_EQ(run.err,
            "update-metadata: note: the product data 'none' cannot be found, so no product has a "
            "base code; check --product-data\n");
}

class WrongList : public ::testing::TestWithParam<WrongUsage> {};

TEST_P(WrongList, IsRejected) {
  EXPECT_EQ(runTool(GetParam().arguments), rejectedRun(GetParam()));
}

const WrongUsage kWrongUsages[] = {
    {"NoDocument", {"list"}, "FILE is required"},
    {"StandardInputTwice", {"list", "-", "-"}, "FILE: standard input (-) can be read only once"},
    {"UnknownFormat", {"list", "--format=csv", "a.json"}, "--format: csv not in {tsv,ndjson}"},
};
INSTANTIATE_TEST_SUITE_P(Usages, WrongList, ::testing::ValuesIn(kWrongUsages),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::list
