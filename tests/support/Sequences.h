#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace test_support {

using Parts = std::vector<std::string>;

/// The bytes of a text, each as a separate part.
inline Parts bytesOf(std::string_view bytes) {
  Parts parts;
  for (const char byte : bytes) {
    parts.emplace_back(1, byte);
  }
  return parts;
}

/// Every sequence of at most `most` parts joined by `separator`, including the empty sequence.
class Sequences {
 public:
  Sequences(Parts parts, std::size_t most, std::string separator = "")
      : parts_(std::move(parts)), most_(most), separator_(std::move(separator)) {}

  /// Calls `visit` with each sequence until a test fails.
  template <class Visit>
  void forEach(const Visit& visit) const {
    visitFrom(visit, "", 0);
  }

 private:
  template <class Visit>
  void visitFrom(const Visit& visit, const std::string& start, std::size_t count) const {
    visit(start);
    if (count == most_ || ::testing::Test::HasFatalFailure()) {
      return;
    }
    for (const std::string& part : parts_) {
      visitFrom(visit, count == 0 ? part : start + separator_ + part, count + 1);
    }
  }

  Parts parts_;
  std::size_t most_;
  std::string separator_;
};

}  // namespace test_support
