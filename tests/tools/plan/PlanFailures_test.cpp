#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::plan {
namespace {

using Json = nlohmann::ordered_json;
using test_support::PlainDocument;
using test_support::refusedRun;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using test_support::WrongUsage;
using ::testing::AllOf;
using ::testing::HasSubstr;

/// A document with three products, of which the product data know two, and a folder for each run.
class PlanFailure : public ::testing::Test {
 protected:
  PlanFailure() {
    PlainDocument document;
    document.components["c"] = {{}, {{"e", {1, 2}}}};
    document.products["Editor"] = {{}, {"c"}};
    document.products["Viewer"] = {{}, {"c"}};
    document.products["Viewer Light"] = {{}, {"c"}};
    document.products["Unknown"] = {{}, {"c"}};
    writeDocument(document);
    folder_.writeFile("products.tsv",
                      "\nED\tEditor\t1\t\nVI\tViewer\t2\t\nVI\tViewer Light\t3\t\n"
                      "PR\tPrinter\t4\t\n");
    folder_.makeFolder("empty");
    around_.folder = folder_.nativePath();
    around_.environment = {"COLUMNS=80"};
  }

  void writeDocument(const PlainDocument& document) const {
    folder_.writeFile("update.json", document.json());
  }

  ToolRun plan(std::vector<std::string> options, const std::string& productData = ".") const {
    options.insert(options.begin(), {"plan", "update.json", "--product-data", productData});
    return runTool(options, around_);
  }

  TemporaryFolder folder_;
  ToolSurroundings around_;
};

// --- which product --------------------------------------------------------------------------

TEST_F(PlanFailure, OfAnUnknownProductTellsTheNearestOnes) {
  const std::string advice = "Name another one with --product; the nearest in the document: ";
  EXPECT_EQ(plan({"--product", "vi2"}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code 'vi2'\n" +
                         advice + "VI (Viewer), ED (Editor)\n"}));
  EXPECT_EQ(plan({"--product", "ED", "--product", "editr"}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code 'editr'\n" +
                         advice + "ED (Editor), VI (Viewer)\n"}));
  EXPECT_EQ(
      plan({"--product", ""}),
      (ToolRun{2, "",
               "update-metadata: 'update.json' has no product with the base code '(empty)'\n" +
                   advice + "ED (Editor), VI (Viewer)\n"}));
}

TEST_F(PlanFailure, OfAProductThatIsNotInTheDocumentTellsItsName) {
  EXPECT_EQ(plan({"--product", "PR"}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code 'PR', which "
                     "is that of 'Printer'\n"
                     "Name another one with --product; the nearest in the document: ED (Editor), "
                     "VI (Viewer)\n"}));
}

TEST_F(PlanFailure, OfAProductSaysThatTheProductDataKnowNone) {
  EXPECT_EQ(plan({"--product", "ED"}, "empty"),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code 'ED'\n"
                     "The product data at 'empty' know none of its products: check "
                     "--product-data, or leave out --product to plan for all\n"}));
}

TEST_F(PlanFailure, OfALongNameShowsAndComparesItsBeginning) {
  const std::string longName(400'000, 'n');
  const std::string character = "\xF0\x9F\x98\x80";  // two units
  PlainDocument document;
  document.products["Editor"] = {{}, {"c"}};
  document.products[longName] = {{}, {"c"}};
  writeDocument(document);
  folder_.writeFile("products.tsv", "\nED\tEditor\t1\t\nLO\t" + longName + "\t2\t\n");
  const std::string asked = std::string(59, 'n') + character;
  EXPECT_EQ(
      plan({"--product", asked + std::string(100'000, 'e')}),
      (ToolRun{2, "",
               "update-metadata: 'update.json' has no product with the base code '" + asked +
                   "...'\nName another one with --product; the nearest in the document: LO (" +
                   std::string(60, 'n') + "...), ED (Editor)\n"}));
  EXPECT_EQ(plan({"--product", std::string(58, 'n') + character}).err,
            "update-metadata: 'update.json' has no product with the base code '" +
                std::string(58, 'n') + character +
                "'\nName another one with --product; the nearest in the document: LO (" +
                std::string(60, 'n') + "...), ED (Editor)\n");
}

// The product data give one code to two products, and the document has only the second.
TEST_F(PlanFailure, OfACodeThatIsGivenToAnotherProductFirstTellsBoth) {
  PlainDocument document;
  document.products["Viewer Light"] = {{}, {"c"}};
  writeDocument(document);
  const std::string complaint =
      "update-metadata: 'update.json' has no product that the base code 'VI' chooses: it has "
      "'Viewer Light' with that code, but the product data give the code to 'Viewer' first\n";
  const std::string othersFirst =
      "The product data at '.' give the codes of its products to others first: correct them, or "
      "leave out --product to plan for all\n";
  EXPECT_EQ(plan({"--product", "VI"}), (ToolRun{2, "", complaint + othersFirst}));
  EXPECT_EQ(plan({"--product", "vi2"}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' has no product with the base code 'vi2'\n" +
                         othersFirst}));
  document.products["Editor"] = {{}, {"c"}};
  writeDocument(document);
  EXPECT_EQ(plan({"--product", "VI"}),
            (ToolRun{2, "",
                     complaint + "Name another one with --product; the nearest in the document: ED "
                                 "(Editor)\n"}));
}

// --- files ----------------------------------------------------------------------------------

/// A tree with some of the files that the document deletes.
class PlanForAnInstallation : public PlanFailure {
 protected:
  PlanForAnInstallation() {
    folder_.writeFile("tree/docs/there.txt", "content");
    folder_.writeFile("tree/docs/kept.txt", "");
    folder_.writeFile("other/secret.txt", "");
    folder_.makeLink("tree/link", "../other");
    folder_.makeLink("tree/loop", "loop");
  }

  void deleteFiles(const std::vector<std::string>& files) const {
    PlainDocument document;
    document.componentsWithFiles["c"]["p"] = {5, files};
    writeDocument(document);
  }

  // Everything below the tree: names, kinds, sizes and times.
  std::map<std::string, std::string> describeTree() const {
    std::map<std::string, std::string> entries;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(folder_.nativePath("tree"))) {
      struct stat status {};
      EXPECT_EQ(::lstat(entry.path().c_str(), &status), 0);
      entries[entry.path().string()] =
          std::to_string(status.st_mode) + ' ' + std::to_string(status.st_size) + ' ' +
          std::to_string(status.st_ino) + ' ' + std::to_string(status.st_ctim.tv_sec) + '.' +
          std::to_string(status.st_ctim.tv_nsec);
    }
    return entries;
  }

  // What a plan says about the files.
  static std::string filesPart(const std::string& plan) {
    const std::size_t begin = plan.find("Files to delete:");
    return plan.substr(begin, plan.find("\n\n", begin) + 1 - begin);
  }
};

TEST_F(PlanForAnInstallation, TellsWhichFilesAreThere) {
  deleteFiles({"docs/there.txt", "docs/gone.txt", "gone/../docs/there.txt", "nul\\u0000", "docs",
               "docs\\\\there.txt"});
  const ToolRun run = plan({"--installed", "tree"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(filesPart(run.out),
            "Files to delete: 6, of 1 package kept otherwise\n"
            "In the installation: 1 there, 4 not there, 1 folder, 0 outside, 0 unknown\n"
            "  5 B  5  c_p\n"
            "    a folder   docs\n"
            "    not there  docs/gone.txt\n"
            "    there      docs/there.txt\n"
            "    not there  docs\\there.txt: a backslash parts no folders here\n"
            "    not there  gone/../docs/there.txt\n"
            "    not there  nul<U+0000>: no file can have this name\n");
}

TEST_F(PlanForAnInstallation, FailsForFilesOutsideOfIt) {
  deleteFiles({"docs/there.txt", "docs/../../other/secret.txt", "link/secret.txt"});
  around_.environment = {"COLUMNS=1000"};  // however long the path of the folder is
  const ToolRun run = plan({"--installed", "tree"});
  const std::string secret =
      std::filesystem::canonical(folder_.nativePath("other/secret.txt")).string();
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.err,
            "update-metadata: 2 files to delete lie outside 'tree' once links and '..' are "
            "resolved; do not apply this document there\n");
  EXPECT_EQ(filesPart(run.out),
            "Files to delete: 3, of 1 package kept otherwise\n"
            "In the installation: 1 there, 0 not there, 0 folders, 2 outside, 0 unknown\n"
            "  5 B  5  c_p\n"
            "    OUTSIDE    docs/../../other/secret.txt, leads to " +
                secret +
                "\n"
                "    there      docs/there.txt\n"
                "    OUTSIDE    link/secret.txt, leads to " +
                secret + "\n");
}

TEST_F(PlanForAnInstallation, FailsForFilesThatCannotBeLookedFor) {
  deleteFiles({"loop"});
  const ToolRun run = plan({"--installed", "tree"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.err,
            "update-metadata: 1 file to delete could not be looked for in 'tree'; the plan tells "
            "why, check the permissions and links there\n");
  EXPECT_THAT(run.out, HasSubstr("    unknown    loop: Too many levels of symbolic links\n"));
}

TEST_F(PlanForAnInstallation, TellsProgramsTheStateOfEachFile) {
  deleteFiles({"docs/there.txt", "../other/\\u001b\\u202e1.txt", "a\\\\b", "loop", "docs"});
  const ToolRun run = plan({"--installed", "tree", "--format=json"});
  EXPECT_EQ(run.exitCode, 1);
  const Json planned = Json::parse(run.out);
  const std::string outside = std::filesystem::canonical(folder_.nativePath("other")).string();
  EXPECT_EQ(
      planned["filesToDelete"],
      Json::parse(R"([{"key":"c_p","size":5,)"
                  R"("files":["../other/\u001b\u202e1.txt","a\\b","docs","docs/there.txt","loop"],)"
                  R"("states":["outside","missing","folder","present","unknown"],)"
                  R"("leadsTo":[")" +
                  outside +
                  R"(/\u001b\u202e1.txt",null,null,null,null],)"
                  R"("reasons":[null,"a backslash parts no folders here",null,null,)"
                  R"("Too many levels of symbolic links"]}])"));
  EXPECT_EQ(planned["installed"].dump(),
            R"({"present":1,"missing":1,"folder":1,"outside":1,"unknown":1})");
}

TEST_F(PlanForAnInstallation, ChangesNothing) {
  deleteFiles({"docs/there.txt", "docs/gone.txt", "link/secret.txt", "loop", "docs"});
  const auto before = describeTree();
  plan({"--installed", "tree"});
  EXPECT_EQ(describeTree(), before);
}

TEST_F(PlanForAnInstallation, NeedsAFolder) {
  EXPECT_EQ(plan({"--installed", "none"}),
            (ToolRun{2, "",
                     "update-metadata: 'none' is no folder that can be looked into: No such file "
                     "or directory; name the folder of the installation with --installed\n"}));
  EXPECT_EQ(plan({"--installed", "update.json"}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' is no folder that can be looked into: Not a "
                     "directory; name the folder of the installation with --installed\n"}));
}

// --- document, usage, output ----------------------------------------------------------------

TEST_F(PlanFailure, OfADocumentThatCannotBeLoadedHasTheCodeTwo) {
  EXPECT_EQ(runTool({"plan", "no-such-file", "--product-data", "."}, around_),
            (ToolRun{2, "",
                     "Update MetaData Json file does not exist \n"
                     "update-metadata: 'no-such-file' could not be loaded; check the path\n"}));
}

TEST_F(PlanFailure, OfProductDataThatCannotBeReadHasTheCodeTwo) {
  folder_.writeFile("products.tsv", "\nx\n");
  EXPECT_EQ(plan({}),
            (ToolRun{2, "",
                     "./products.tsv:2: expected 4 tab-separated fields, found 1\n"
                     "update-metadata: 'update.json' was loaded, but the questions about it could "
                     "not be answered; check the product data at '.'\n"}));
}

class WrongUsages : public ::testing::TestWithParam<WrongUsage> {};

TEST_P(WrongUsages, EndWithTheCodeTwoAndAPointerToTheHelp) {
  EXPECT_EQ(runTool(GetParam().arguments), refusedRun(GetParam()));
}

const WrongUsage kWrongUsages[] = {
    {"NoFile", {"plan", "--product-data", "."}, "FILE is required"},
    {"NoProductData", {"plan", "x"}, "--product-data is required"},
    {"ProductWithoutCode",
     {"plan", "x", "--product-data", ".", "--product"},
     "--product: 1 required CODE missing"},
    {"ProductNotUtf8",
     {"plan", "x", "--product-data", ".", "--product", "\xFF"},
     "--product: the argument is not UTF-8"},
    {"UnknownFormat",
     {"plan", "x", "--product-data", ".", "--format", "xml"},
     "--format: xml not in {text,json}"},
};
INSTANTIATE_TEST_SUITE_P(Usages, WrongUsages, ::testing::ValuesIn(kWrongUsages),
                         [](const auto& row) { return row.param.name; });

TEST_F(PlanFailure, IsAnOutputThatIsNotWritten) {
  for (const char* format : {"--format=text", "--format=json"}) {
    around_.outFile = "/dev/full";
    around_.isOutClosedPipe = false;
    EXPECT_EQ(plan({format}),
              (ToolRun{1, "",
                       "update-metadata: standard output could not be written: No space left on "
                       "device; what was written is not complete\n"}));
    around_.outFile.reset();
    around_.isOutClosedPipe = true;
    EXPECT_EQ(plan({format}),
              (ToolRun{1, "",
                       "update-metadata: standard output could not be written: Broken pipe; what "
                       "was written is not complete\n"}));
  }
}

TEST(HelpOfPlan, TellsExamplesAndExitCodes) {
  const ToolRun help = runTool({"plan", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_THAT(help.out, AllOf(HasSubstr("Usage: update-metadata plan [OPTIONS] FILE\n"),
                              HasSubstr("Examples:\n  update-metadata plan update.json "),
                              HasSubstr("Exit status: 0 planned, 1 ")));
}

}  // namespace
}  // namespace update_metadata_tool::plan
