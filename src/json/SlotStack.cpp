#include "json/SlotStack.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "foundation/core/large_pages.h"

namespace foundation::json::detail {
namespace {

constexpr std::size_t kFirstRoom = 256;

// Spare room below this, 1 MiB, is not worth releasing.
constexpr std::size_t kLeastSpareRoom = (std::size_t{1} << 20) / sizeof(Rep);

// The room to keep beyond `slots` when memory is released; twice that much is spare before any is
// released. An eighth, so that releasing and growing again take constant time for each slot pushed
// or dropped in between, whatever their order.
std::size_t spareRoom(std::size_t slots) noexcept {
  return std::max(kLeastSpareRoom, slots / 8);
}

}  // namespace

SlotStack::~SlotStack() {
  std::free(begin_);
}

void SlotStack::grow() {
  const std::size_t slots = size();
  // Cannot overflow: the existing slots would have to fill more than half of the address space.
  const std::size_t room = std::max(kFirstRoom, slots * 2);
  void* const memory = std::realloc(begin_, room * sizeof(Rep));
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  setMemory(memory, slots, room);
  core::adviseLargePages(memory, room * sizeof(Rep));
}

void SlotStack::shrink() noexcept {
  const std::size_t slots = size();
  const std::size_t room = slots + spareRoom(slots);
  void* const memory = std::realloc(begin_, room * sizeof(Rep));
  if (memory != nullptr) {
    setMemory(memory, slots, room);
  }
}

void SlotStack::setMemory(void* memory, std::size_t slots, std::size_t room) noexcept {
  begin_ = static_cast<Rep*>(memory);
  end_ = begin_ + slots;
  limit_ = begin_ + room;
  const std::size_t free = 2 * spareRoom(room);
  shrinkBelow_ = room > free ? limit_ - free : begin_;
}

}  // namespace foundation::json::detail
