// Arguments and streams are UTF-8 whatever the code page, and bytes are not converted.

#include <string>

#include <gtest/gtest.h>

#include "support/PlainDocument.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool {
namespace {

using test_support::PlainDocument;
using test_support::readBytes;
using test_support::runTool;
using test_support::TemporaryFolder;
using test_support::ToolRun;
using test_support::ToolSurroundings;

const std::string kName = "\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80.json";

TEST(WindowsArguments, NameFilesInEveryLanguage) {
  const TemporaryFolder folder;
  folder.writeFile(kName, PlainDocument().json());
  ToolSurroundings around;
  around.folder = folder.nativePath();
  const ToolRun run = runTool({"lint", kName}, around);
  EXPECT_EQ(run.exitCode, 0) << run;
  EXPECT_EQ(run.out.substr(0, kName.size() + 1), kName + ':');
}

TEST(WindowsArguments, MayBeginWithASlash) {
  EXPECT_EQ(runTool({"lint", "/missing.json"}).err,
            "Update MetaData Json file does not exist \n"
            "update-metadata: '/missing.json' could not be loaded; check the path\n");
}

TEST(WindowsArguments, KeepQuotesAndBackslashes) {
  EXPECT_EQ(runTool({"lint", "a \"b\\\" c\\"}).err,
            "Update MetaData Json file does not exist \n"
            "update-metadata: 'a \"b\\\" c\\' could not be loaded; check the path\n");
}

TEST(WindowsStreams, KeepEveryByte) {
  const TemporaryFolder folder;
  const std::string document = PlainDocument().json();
  folder.writeFile("in", "\r\n" + document + "\r\n");
  ToolSurroundings around;
  around.inFile = folder.nativePath("in");
  const ToolRun run = runTool({"fmt", "--compact", "-"}, around);
  EXPECT_EQ(run.exitCode, 0) << run;
  EXPECT_EQ(run.out.find('\r'), std::string::npos);
  EXPECT_EQ(run.err, "");
  folder.writeFile("in", document + '\x1A');
  EXPECT_NE(runTool({"fmt", "-"}, around).exitCode, 0) << "the byte is part of the text";
}

TEST(WindowsStreams, HaveLineFeedsOnly) {
  const ToolRun help = runTool({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_EQ(help.out.find('\r'), std::string::npos);
  EXPECT_EQ(runTool({}).err.find('\r'), std::string::npos);
}

TEST(WindowsFiles, AreReplacedWhole) {
  const TemporaryFolder folder;
  folder.writeFile(kName, PlainDocument().json() + "\r\n");
  ToolSurroundings around;
  around.folder = folder.nativePath();
  EXPECT_EQ(runTool({"fmt", kName}, around), (ToolRun{0, "", ""}));
  EXPECT_EQ(readBytes(folder.nativePath(kName)).find('\r'), std::string::npos);
  EXPECT_EQ(runTool({"fmt", "--check", kName}, around), (ToolRun{0, "", ""}));
}

}  // namespace
}  // namespace update_metadata_tool
