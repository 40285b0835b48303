#include "schema/SchemaCommand.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RunTool.h"

namespace update_metadata_tool::schema {
namespace {

using test_support::readBytes;
using test_support::runTool;
using test_support::ToolRun;
using test_support::ToolSurroundings;
using ::testing::HasSubstr;

TEST(Schema, IsPrintedExactlyAsItIsInItsFile) {
  const std::string file =
      readBytes(UMP_SOURCE_DIR "/tools/update-metadata/schema/update-metadata.schema.json");
  EXPECT_EQ(runTool({"schema"}), (ToolRun{0, file, ""}));
}

TEST(Schema, AcceptsNoArgument) {
  EXPECT_EQ(runTool({"schema", "update.json"}),
            (ToolRun{2, "",
                     "The following argument was not expected: update.json\n"
                     "Run with --help for more information.\n"}));
}

TEST(Schema, ReportsThatItWasNotPrintedCompletely) {
  ToolSurroundings around;
  around.outFile = "/dev/full";
  EXPECT_EQ(runTool({"schema"}, around),
            (ToolRun{1, "",
                     "update-metadata: standard output could not be written: No space left on "
                     "device; the output is incomplete\n"}));
}

TEST(Schema, HasAHelpThatShowsHowADocumentRefersToIt) {
  const ToolRun help = runTool({"schema", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_THAT(help.out, HasSubstr("  update-metadata schema > update-metadata.schema.json\n"));
  EXPECT_THAT(help.out, HasSubstr("{\"$schema\": \"./update-metadata.schema.json\", "));
}

}  // namespace
}  // namespace update_metadata_tool::schema
