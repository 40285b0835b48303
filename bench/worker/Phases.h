#pragma once

#include <iosfwd>
#include <string>

namespace bench::worker {

/// Loads a document step by step, asks about it, and writes how long each step took: its name, a
/// tab, and the seconds of the clock on the wall and of the process's own.
void printPhases(const std::string& path, std::ostream& out);

}  // namespace bench::worker
