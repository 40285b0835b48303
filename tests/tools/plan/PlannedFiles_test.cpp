#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Json.h"
#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::plan {
namespace {

using test_support::Json;
using test_support::parseJson;
using test_support::PlainDocument;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using ::testing::HasSubstr;

/// An installation "tree" with some of the files that the document deletes.
class PlanForAnInstallation : public ::testing::Test {
 protected:
  PlanForAnInstallation() {
    folder_.writeFile("update.json", PlainDocument().json());
    folder_.writeFile("products.tsv", "\n");
    around_.folder = folder_.nativePath();
    around_.environment = {"COLUMNS=80"};
    folder_.writeFile("tree/docs/there.txt", "content");
    folder_.writeFile("tree/docs/kept.txt", "");
    folder_.writeFile("other/secret.txt", "");
    folder_.makeLink("tree/link", "../other");
    folder_.makeLink("tree/loop", "loop");
  }

  void deleteFiles(const std::vector<std::string>& files) const {
    PlainDocument document;
    document.componentsWithFiles["c"]["p"] = {5, files};
    folder_.writeFile("update.json", document.json());
  }

  ToolRun plan(std::vector<std::string> options) const {
    options.insert(options.begin(), {"plan", "update.json", "--product-data=."});
    return runTool(options, around_);
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

  // The part of a plan about the files.
  static std::string filesPart(const std::string& plan) {
    const std::size_t begin = plan.find("Files to delete:");
    return plan.substr(begin, plan.find("\n\n", begin) + 1 - begin);
  }

  TemporaryFolder folder_;
  ToolSurroundings around_;
};

TEST_F(PlanForAnInstallation, ShowsWhichFilesExist) {
  deleteFiles({"docs/there.txt", "docs/gone.txt", "gone/../docs/there.txt", "nul\\u0000", "docs",
               "docs\\\\there.txt"});
  const ToolRun run = plan({"--installed", "tree"});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(filesPart(run.out),
            "Files to delete: 6, from 1 package that is otherwise kept\n"
            "In the installation: 1 present, 4 missing, 1 folder, 0 outside, 0 unknown\n"
            "  c_p: 5 bytes\n"
            "    folder   docs\n"
            "    missing  docs/gone.txt\n"
            "    present  docs/there.txt\n"
            "    missing  docs\\there.txt: a backslash does not separate folders here\n"
            "    missing  gone/../docs/there.txt\n"
            "    missing  nul<U+0000>: no file can have this name\n");
}

TEST_F(PlanForAnInstallation, FailsForFilesOutside) {
  deleteFiles({"docs/there.txt", "docs/../../other/secret.txt", "link/secret.txt"});
  around_.environment = {"COLUMNS=1000"};  // enough for the path of any folder
  const ToolRun run = plan({"--installed", "tree"});
  const std::string secret =
      std::filesystem::canonical(folder_.nativePath("other/secret.txt")).string();
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.err,
            "update-metadata: 2 files to delete lie outside 'tree' once links and '..' are "
            "resolved; do not apply this document there\n");
  EXPECT_EQ(filesPart(run.out),
            "Files to delete: 3, from 1 package that is otherwise kept\n"
            "In the installation: 1 present, 0 missing, 0 folders, 2 outside, 0 unknown\n"
            "  c_p: 5 bytes\n"
            "    OUTSIDE  docs/../../other/secret.txt, leads to " +
                secret +
                "\n"
                "    present  docs/there.txt\n"
                "    OUTSIDE  link/secret.txt, leads to " +
                secret + "\n");
}

TEST_F(PlanForAnInstallation, FailsForFilesThatCannotBeSearchedFor) {
  deleteFiles({"loop"});
  const ToolRun run = plan({"--installed", "tree"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_EQ(run.err,
            "update-metadata: 1 file to delete could not be searched for in 'tree'; the plan shows "
            "why: check the permissions and links there\n");
  EXPECT_THAT(run.out, HasSubstr("    unknown  loop: Too many levels of symbolic links\n"));
}

TEST_F(PlanForAnInstallation, WritesTheStateOfEachFileForPrograms) {
  deleteFiles({"docs/there.txt", "../other/\\u001b\\u202e1.txt", "a\\\\b", "loop", "docs"});
  const ToolRun run = plan({"--installed", "tree", "--format=json"});
  EXPECT_EQ(run.exitCode, 1);
  const Json planned = parseJson(run.out);
  const std::string outside = std::filesystem::canonical(folder_.nativePath("other")).string();
  EXPECT_EQ(
      planned["filesToDelete"],
      parseJson(R"([{"key":"c_p","size":5,)"
                R"("files":["../other/\u001b\u202e1.txt","a\\b","docs","docs/there.txt","loop"],)"
                R"("states":["outside","missing","folder","present","unknown"],)"
                R"("leadsTo":[")" +
                outside +
                R"(/\u001b\u202e1.txt",null,null,null,null],)"
                R"("reasons":[null,"a backslash does not separate folders here",null,null,)"
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
  EXPECT_EQ(
      plan({"--installed", "none"}),
      (ToolRun{2, "",
               "update-metadata: 'none' cannot be read as a folder: No such file or directory; "
               "name the installation folder with --installed\n"}));
  EXPECT_EQ(plan({"--installed", "update.json"}),
            (ToolRun{2, "",
                     "update-metadata: 'update.json' cannot be read as a folder: Not a directory; "
                     "name the installation folder with --installed\n"}));
}

}  // namespace
}  // namespace update_metadata_tool::plan
