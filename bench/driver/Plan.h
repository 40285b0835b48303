#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "driver/Table.h"
#include "driver/Worker.h"

namespace bench::driver {

/// What to measure.
struct Plan {
  std::string documents = "documents";  ///< folder that generated documents are written to
  std::vector<std::string> presets;     ///< names of generated documents to measure
  std::vector<std::string> files;       ///< existing documents to measure
  std::vector<std::string> tasks;  ///< parse, load, floor, phases, command, hostile, growth, micro
  std::size_t rounds = 0;          ///< for all except very small documents
  std::size_t hostileDivisor = 1;  ///< divisor for the sizes of hostile texts
  std::string micro;               ///< path of the micro-benchmark program
  std::string command;             ///< path of update-metadata
};

/// Makes the documents, checks that all peers give the same answers about them, and measures.
/// Progress is printed to standard error.
std::vector<Row> carryOut(const Plan& plan, const Worker& worker);

}  // namespace bench::driver
