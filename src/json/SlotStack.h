#pragma once

#include <cstddef>
#include <type_traits>

#include "foundation/json/Value.h"

namespace foundation::json::detail {

/// A stack of plain slots in one block of memory. The block grows, and shrinks when it has too much
/// spare room, without copying where the system supports that.
///
/// With deep nesting it is the largest object in memory: a growing vector would hold the slots
/// twice, and a vector that never shrinks would hold all of them while the tree is built from them.
class SlotStack {
 public:
  SlotStack() noexcept = default;
  SlotStack(const SlotStack&) = delete;
  SlotStack& operator=(const SlotStack&) = delete;
  ~SlotStack();

  /// The number of slots.
  std::size_t size() const noexcept { return static_cast<std::size_t>(end_ - begin_); }

  /// The slot pushed first; valid until the next push() or truncate().
  const Rep* begin() const noexcept { return begin_; }

  /// The end of the slots.
  const Rep* end() const noexcept { return end_; }

  /// The slot at `place`, from 0. \pre `place` is less than size().
  Rep& operator[](std::size_t place) noexcept { return begin_[place]; }

  /// The same, for reading.
  const Rep& operator[](std::size_t place) const noexcept { return begin_[place]; }

  /// The slot pushed last. \pre there is one
  const Rep& back() const noexcept { return end_[-1]; }

  /// Amortized constant time. \throws std::bad_alloc
  void push(const Rep& slot) {
    if (end_ == limit_) {
      grow();
    }
    *end_++ = slot;
  }

  /// Drops all slots except the first `size`.
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
  Rep* shrinkBelow_ = nullptr;  // below this end, there is enough spare room to release
};

}  // namespace foundation::json::detail
