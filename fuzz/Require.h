#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

/// Ends the program, with `problem` on standard error, unless `holds`.
inline void require(bool holds, const char* problem) {
  if (!holds) {
    std::fprintf(stderr, "fuzzer: %s\n", problem);
    std::abort();
  }
}

/// Like require(), and prints the actual and the expected text.
inline void requireEqual(const std::string& found, const std::string& expected,
                         const char* problem) {
  if (found != expected) {
    std::fprintf(stderr, "found:    %s\nexpected: %s\n", found.c_str(), expected.c_str());
    require(false, problem);
  }
}

}  // namespace fuzz
