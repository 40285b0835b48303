#pragma once

#include <iosfwd>
#include <string>

namespace bench::worker {

/// Does only what no implementation of the library's interface can avoid for a document, and prints
/// the time of each step as StepList does: reading the file, parsing it, building and destroying
/// the handler's two tables, converting the names of files for the handler, and building the
/// containers of the four answers from ready keys in order.
void printFloor(const std::string& path, std::ostream& out);

}  // namespace bench::worker
