#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace test_support {

/// Makes texts that are JSON or nearly so; the same seed gives the same texts.
class RandomJsonText {
 public:
  explicit RandomJsonText(std::uint64_t seed) : random_(seed) {}

  /// Returns the next text: a value of a small grammar with members that name integer types, odd
  /// escapes, long numbers, white space and comments. Most texts have up to three random changes.
  std::string next();

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }
  bool oneIn(std::size_t count) { return below(count) == 0; }
  template <std::size_t N>
  std::string_view oneOf(const std::string_view (&choices)[N]) {
    return choices[below(N)];
  }

  void addValue(std::size_t depth);
  void addMember(std::size_t depth);
  void addIntegers();
  void addNumber();
  void addString();
  void addSpace();
  void addDigits();
  void change();

  std::mt19937_64 random_;
  std::string text_;
};

}  // namespace test_support
