#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace bench::generate {

/// Random numbers that are the same everywhere: they depend only on the seed, not on the
/// distributions of any library.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) noexcept : state_(seed) {}

  /// Returns the next 64 bits.
  std::uint64_t next() noexcept {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t bits = state_;
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBU;
    return bits ^ (bits >> 31);
  }

  /// Returns a number below `limit`. \pre limit is not 0
  std::uint64_t below(std::uint64_t limit) noexcept { return next() % limit; }

  /// Returns one element of an array or a vector. \pre it is not empty
  template <class List>
  const auto& pick(const List& list) noexcept {
    return list[static_cast<std::size_t>(below(list.size()))];
  }

  template <class T>
  void shuffle(std::vector<T>& list) noexcept {
    for (std::size_t left = list.size(); left > 1; --left) {
      std::swap(list[left - 1], list[static_cast<std::size_t>(below(left))]);
    }
  }

  /// Returns `count` different numbers below `limit` in random order, or all of them if there are
  /// fewer.
  std::vector<std::size_t> distinct(std::size_t count, std::size_t limit) {
    std::vector<std::size_t> numbers(limit);
    for (std::size_t i = 0; i < limit; ++i) {
      numbers[i] = i;
    }
    const std::size_t taken = count < limit ? count : limit;
    for (std::size_t i = 0; i < taken; ++i) {
      std::swap(numbers[i], numbers[i + static_cast<std::size_t>(below(limit - i))]);
    }
    numbers.resize(taken);
    return numbers;
  }

 private:
  std::uint64_t state_;
};

}  // namespace bench::generate
