#pragma once

#include <string>
#include <vector>

namespace bench::driver {

/// Runs a program to its end, in a process of its own, and returns what it wrote to its standard
/// output. Its standard error is ours.
///
/// \throws std::runtime_error  the program could not be started or did not succeed
std::string outputOf(const std::vector<std::string>& command);

}  // namespace bench::driver
