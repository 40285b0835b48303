#include "support/ToolCases.h"

#include <ostream>

#include "support/StoredText.h"
#include "support/TemporaryFolder.h"

namespace test_support {
namespace {

const std::string kSourceDir = UMP_SOURCE_DIR;

}  // namespace

ToolRun runOnSamples(const std::vector<std::string>& arguments, const std::string& columns) {
  ToolSurroundings around;
  around.folder = kSourceDir + "/examples/documents";
  around.environment = {"COLUMNS=" + columns};
  return runTool(arguments, around);
}

ToolRun runOnDocument(std::vector<std::string> arguments, const std::string& document,
                      const std::string& products) {
  const TemporaryFolder folder;
  folder.writeFile("update.json", document);
  arguments.push_back("update.json");
  if (!products.empty()) {
    folder.writeFile("products.tsv", products);
    arguments.push_back("--product-data=.");
  }
  ToolSurroundings around;
  around.folder = folder.nativePath();
  around.environment = {"COLUMNS=80"};
  return runTool(arguments, around);
}

std::ostream& operator<<(std::ostream& out, const SampleRun& row) {
  return out << row.name;
}

void expectStored(const SampleRun& sample) {
  const ToolRun run = runOnSamples(sample.arguments, sample.columns);
  const std::string stored =
      storedText(kSourceDir + "/tests/golden/tool/" + sample.expected, run.out);
  EXPECT_EQ(run, (ToolRun{sample.exitCode, stored, ""}));
}

std::ostream& operator<<(std::ostream& out, const WrongUsage& row) {
  return out << row.name;
}

ToolRun rejectedRun(const WrongUsage& usage) {
  return {2, "", usage.message + "\nRun with --help for more information.\n"};
}

ToolRun unwrittenRun(int exitCode, const std::string& reason) {
  return {exitCode, "",
          "update-metadata: standard output could not be written: " + reason +
              "; the output is incomplete\n"};
}

}  // namespace test_support
