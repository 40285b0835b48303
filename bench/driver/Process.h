#pragma once

#include <string>
#include <vector>

namespace bench::driver {

/// Runs a program in its own process, waits for it and returns its standard output. Its standard
/// error is ours.
///
/// \throws std::runtime_error  the program could not be started or failed
std::string outputOf(const std::vector<std::string>& command);

/// The time of a program from its start to its end.
struct Usage {
  double wallSeconds = 0;
  double cpuSeconds = 0;
};

/// Runs a program in its own process and waits for it. Its standard output and standard error are
/// dropped.
///
/// \throws std::runtime_error  the program could not be started, or its exit status was neither 0
///                             nor 1, which also means that two documents differ
Usage usageOf(const std::vector<std::string>& command);

}  // namespace bench::driver
