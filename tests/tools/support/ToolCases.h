#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "support/RunTool.h"

namespace test_support {

/// The sample documents and their product data, in the folder in which runSample() runs.
inline const std::string kSmall = "small/update.json";
inline const std::string kSmallProducts = "small/product-data";
inline const std::string kRealistic = "realistic/update.json";
inline const std::string kRealisticProducts = "realistic/product-data";

/// A run of the command on the sample documents whose output is stored.
struct SampleRun {
  const char* name;
  std::vector<std::string> arguments;  ///< in the folder of the sample documents
  const char* columns;                 ///< width of the lines that it writes
  const char* expected;                ///< file in tests/golden/tool
};

std::ostream& operator<<(std::ostream& out, const SampleRun& row);

/// Runs the command in the folder of the sample documents.
ToolRun runSample(const SampleRun& sample);

/// The expected result of such a run: no message on standard error, and the stored output, which
/// storedText() updates from `now`.
ToolRun storedRun(const SampleRun& sample, const ToolRun& now);

/// Arguments that the command does not understand.
struct WrongUsage {
  const char* name;
  std::vector<std::string> arguments;
  std::string message;  ///< first line on standard error
};

std::ostream& operator<<(std::ostream& out, const WrongUsage& row);

/// The expected result of a run with such arguments: status 2 and a pointer to the help.
ToolRun refusedRun(const WrongUsage& usage);

}  // namespace test_support
