#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace bench::peers {

/// Counts and sums over a value tree that do not depend on order: two readers of one text must
/// agree on them.
class Census {
 public:
  void addValue() noexcept { ++values_; }
  void addKey(std::string_view key) noexcept { textBytes_ += key.size(); }
  void addText(std::string_view text) noexcept { textBytes_ += text.size(); }
  void addNumber(double number) noexcept {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    numberBits_ += bits;
  }

  std::uint64_t digest() const noexcept {
    return (values_ * 0x9E3779B97F4A7C15U + textBytes_) * 0x9E3779B97F4A7C15U + numberBits_;
  }

 private:
  std::uint64_t values_ = 0;
  std::uint64_t textBytes_ = 0;
  std::uint64_t numberBits_ = 0;
};

}  // namespace bench::peers
