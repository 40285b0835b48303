// SPDX-License-Identifier: MIT

#pragma once

#include <limits>

namespace mf::zero {

/// A number of references, counted in an unsigned type.
///
/// It never wraps: once it has reached the type's maximum it stays there, and the counted object is
/// never freed. Endlessly leaking references thus wastes memory but never frees an object in use. A
/// count belongs to one thread at a time.
template <class Unsigned>
class SaturatingCount {
 public:
  /// Adds a reference.
  void add() noexcept { count_ = static_cast<Unsigned>(count_ + (count_ != kStuck ? 1 : 0)); }

  /// Drops a reference and returns whether it was the last. \pre there is one
  [[nodiscard]] bool drop() noexcept {
    count_ = static_cast<Unsigned>(count_ - (count_ != kStuck ? 1 : 0));
    return count_ == 0;
  }

  /// Whether there are no references.
  bool isZero() const noexcept { return count_ == 0; }

 private:
  static constexpr Unsigned kStuck = std::numeric_limits<Unsigned>::max();

  Unsigned count_ = 0;
};

}  // namespace mf::zero
