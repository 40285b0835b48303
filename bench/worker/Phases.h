#pragma once

#include <iosfwd>
#include <string>

namespace bench::worker {

/// Loads a document step by step, queries it, and prints the time of each step: its name, a tab,
/// and the seconds by the wall clock and by the processor clock.
void printPhases(const std::string& path, std::ostream& out);

}  // namespace bench::worker
