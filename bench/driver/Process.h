#pragma once

#include <string>
#include <vector>

namespace bench::driver {

/// Runs a program in its own process, waits for it and returns its standard output. Its standard
/// error is ours.
///
/// \throws std::runtime_error  the program could not be started or failed
std::string outputOf(const std::vector<std::string>& command);

}  // namespace bench::driver
