#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/RunTool.h"

namespace test_support {

/// The sample documents and their product data, in the folder of runOnSamples().
inline const std::string kSmall = "small/update.json";
inline const std::string kSmallProducts = "small/product-data";
inline const std::string kRealistic = "realistic/update.json";
inline const std::string kRealisticProducts = "realistic/product-data";

/// Runs the command in the folder of the sample documents.
///
/// \param columns  the width of lines; empty for no limit
ToolRun runOnSamples(const std::vector<std::string>& arguments, const std::string& columns = "");

/// Runs the command in a new folder, with lines of 80 columns. Appends update.json, which has the
/// text `document`, to `arguments`, and product data, which are the table `products`, unless empty.
ToolRun runOnDocument(std::vector<std::string> arguments, const std::string& document,
                      const std::string& products = "");

/// A run of the command on the sample documents whose output is stored.
struct SampleRun {
  const char* name;
  std::vector<std::string> arguments;
  const char* columns;
  const char* expected;  ///< file in tests/golden/tool
  int exitCode = 0;
};

std::ostream& operator<<(std::ostream& out, const SampleRun& row);

class SampleRuns : public ::testing::TestWithParam<SampleRun> {};

/// Expects that a sample run prints the stored text and no message.
void expectStored(const SampleRun& sample);

/// A command line with a usage error.
struct WrongUsage {
  const char* name;
  std::vector<std::string> arguments;
  std::string message;  ///< first line on standard error
};

std::ostream& operator<<(std::ostream& out, const WrongUsage& row);

/// The expected result of a usage error: status 2 and a hint at the help.
ToolRun rejectedRun(const WrongUsage& usage);

/// The expected result if standard output cannot be written for this reason.
ToolRun unwrittenRun(int exitCode, const std::string& reason);

}  // namespace test_support
