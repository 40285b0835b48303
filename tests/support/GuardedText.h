#pragma once

#include <cstddef>
#include <string_view>

namespace test_support {

/// Memory for a text that ends exactly where readable memory ends. Reading one byte beyond the text
/// ends the program, and so does reading before it if it fills the memory.
class GuardedText {
 public:
  /// The maximum size of a text in bytes.
  static constexpr std::size_t kCapacity = 4096;

  GuardedText();
  GuardedText(const GuardedText&) = delete;
  GuardedText& operator=(const GuardedText&) = delete;
  ~GuardedText();

  /// Copies a text to the end of the memory. It is valid until the next call.
  std::string_view place(std::string_view text);

 private:
  char* memory_;
};

}  // namespace test_support
