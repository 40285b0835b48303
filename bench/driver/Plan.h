#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "driver/Table.h"
#include "driver/Worker.h"

namespace bench::driver {

/// What is to be measured.
struct Plan {
  std::string documents = "documents";  ///< folder that generated documents are written to
  std::vector<std::string> presets;     ///< names of generated documents to measure
  std::vector<std::string> files;       ///< documents that are already there
  std::vector<std::string> tasks;       ///< parse, load, phases, hostile, growth, micro
  std::size_t rounds = 0;               ///< of all but documents that take no time
  std::size_t hostileDivisor = 1;       ///< what the sizes of hostile texts are divided by
  std::string micro;                    ///< program of the micro-benchmarks
};

/// Makes the documents, compares all peers' answers about them, and measures. The progress goes to
/// the standard error.
std::vector<Row> carryOut(const Plan& plan, const Worker& worker);

}  // namespace bench::driver
