#pragma once

#include <cstddef>
#include <string_view>

namespace test_support {

/// Memory for a text that ends where the memory that may be read ends: whoever reads one byte
/// beyond the text, or before it if it takes up the whole memory, ends the program.
class GuardedText {
 public:
  /// The most bytes that a text may have.
  static constexpr std::size_t kCapacity = 4096;

  GuardedText();
  GuardedText(const GuardedText&) = delete;
  GuardedText& operator=(const GuardedText&) = delete;
  ~GuardedText();

  /// Copies a text to the end of the memory. It stays until the next one is placed.
  std::string_view place(std::string_view text);

 private:
  char* memory_;
};

}  // namespace test_support
