#pragma once

#include <iosfwd>
#include <string>

namespace bench::worker {

/// Loads a document step by step, queries it, and prints the time of each step as StepList does.
void printPhases(const std::string& path, std::ostream& out);

}  // namespace bench::worker
