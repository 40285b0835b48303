#pragma once

#include <cstddef>
#include <type_traits>

#include "foundation/json/Value.h"

namespace foundation::json::detail {

/// A stack of plain slots, in one block of memory that grows, and gives back what it no longer
/// needs, without being copied where the system can do so.
///
/// Deep nesting makes it the largest thing in memory: a growing vector would hold the slots twice,
/// and a vector that never shrinks would hold them all while the tree is made of them.
class SlotStack {
 public:
  SlotStack() noexcept = default;
  SlotStack(const SlotStack&) = delete;
  SlotStack& operator=(const SlotStack&) = delete;
  ~SlotStack();

  /// The number of slots.
  std::size_t size() const noexcept { return static_cast<std::size_t>(end_ - begin_); }

  /// The slot that was pushed first; valid until the next push() or truncate().
  const Rep* begin() const noexcept { return begin_; }

  /// The end of the slots.
  const Rep* end() const noexcept { return end_; }

  /// The slot at `place`, from 0. \pre `place` is less than size().
  Rep& operator[](std::size_t place) noexcept { return begin_[place]; }

  /// The same, for reading.
  const Rep& operator[](std::size_t place) const noexcept { return begin_[place]; }

  /// The slot that was pushed last. \pre there is one.
  const Rep& back() const noexcept { return end_[-1]; }

  /// Amortised constant time. \throws std::bad_alloc
  void push(const Rep& slot) {
    if (end_ == limit_) {
      grow();
    }
    *end_++ = slot;
  }

  /// Drops all slots but the first `size`.
  void truncate(std::size_t size) noexcept {
    end_ = begin_ + size;
    if (end_ < shrinkBelow_) {
      shrink();
    }
  }

 private:
  static_assert(std::is_trivially_copyable_v<Rep>, "slots are moved as bytes");

  void grow();
  void shrink() noexcept;
  void setMemory(void* memory, std::size_t slots, std::size_t room) noexcept;

  Rep* begin_ = nullptr;
  Rep* end_ = nullptr;
  Rep* limit_ = nullptr;
  Rep* shrinkBelow_ = nullptr;  // an end below this leaves so much room that it is given back
};

}  // namespace foundation::json::detail
