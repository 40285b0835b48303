#include "support/ToolCases.h"

#include <ostream>

#include "support/StoredText.h"

namespace test_support {
namespace {

const std::string kSourceDir = UMP_SOURCE_DIR;

}  // namespace

std::ostream& operator<<(std::ostream& out, const SampleRun& row) {
  return out << row.name;
}

ToolRun runSample(const SampleRun& sample) {
  ToolSurroundings around;
  around.folder = kSourceDir + "/examples/documents";
  around.environment = {std::string("COLUMNS=") + sample.columns};
  return runTool(sample.arguments, around);
}

ToolRun storedRun(const SampleRun& sample, const ToolRun& now) {
  return {0, storedText(kSourceDir + "/tests/golden/tool/" + sample.expected, now.out), ""};
}

std::ostream& operator<<(std::ostream& out, const WrongUsage& row) {
  return out << row.name;
}

ToolRun refusedRun(const WrongUsage& usage) {
  return {2, "", usage.message + "\nRun with --help for more information.\n"};
}

}  // namespace test_support
