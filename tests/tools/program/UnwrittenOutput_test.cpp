// Standard output that cannot be written is reported by every subcommand.

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::program {
namespace {

using test_support::kRealistic;
using test_support::kSmall;
using test_support::kSmallProducts;
using test_support::runTool;
using test_support::ToolSurroundings;
using test_support::unwrittenRun;

struct Output {
  const char* name;
  std::vector<std::string> arguments;
  int exitCode = 1;
};

std::ostream& operator<<(std::ostream& out, const Output& row) {
  return out << row.name;
}

class UnwrittenOutput : public ::testing::TestWithParam<Output> {
 protected:
  UnwrittenOutput() { around_.folder = UMP_SOURCE_DIR "/examples/documents"; }

  ToolSurroundings around_;
};

TEST_P(UnwrittenOutput, IsReportedOnAFullDisk) {
  around_.outFile = "/dev/full";
  EXPECT_EQ(runTool(GetParam().arguments, around_),
            unwrittenRun(GetParam().exitCode, "No space left on device"));
}

TEST_P(UnwrittenOutput, IsReportedOnAPipeWithoutAReader) {
  around_.isOutClosedPipe = true;
  EXPECT_EQ(runTool(GetParam().arguments, around_),
            unwrittenRun(GetParam().exitCode, "Broken pipe"));
}

const Output kOutputs[] = {
    {"Version", {"--version"}},
    {"Help", {"query", "--help"}},
    {"Query", {"query", kSmall}},
    {"QueryForPrograms", {"query", kSmall, "--format=json"}},
    {"Show", {"show", kSmall}},
    {"ShowForPrograms", {"show", kSmall, "--format=json"}},
    {"Why", {"why", "core_engine", kSmall}},
    {"WhyForPrograms", {"why", "core_engine", kSmall, "--format=json"}},
    {"List", {"list", kSmall}},
    {"ListByTwoProcesses", {"list", kSmall, kRealistic, "--format=ndjson", "--jobs=2"}},
    {"Plan", {"plan", kSmall, "--product-data", kSmallProducts}},
    {"PlanForPrograms", {"plan", kSmall, "--product-data", kSmallProducts, "--format=json"}},
    {"NoDifference", {"diff", kSmall, kSmall}, 2},
    {"NoDifferenceForPrograms", {"diff", kSmall, kSmall, "--format=json"}, 2},
    {"Difference", {"diff", kSmall, kRealistic}, 2},
    {"DifferenceForPrograms", {"diff", kSmall, kRealistic, "--format=json"}, 2},
    {"Report", {"report", kSmall, "-o", "-"}},
};
INSTANTIATE_TEST_SUITE_P(Outputs, UnwrittenOutput, ::testing::ValuesIn(kOutputs),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::program
