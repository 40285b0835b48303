#include "foundation/json/SlotStack.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

#include "foundation/core/large_pages.h"

namespace foundation::json::detail {
namespace {

constexpr std::size_t kFirstRoom = 256;
constexpr std::size_t kMostSlots = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(Rep);

// Less room than this, 1 MiB, is not worth giving back.
constexpr std::size_t kRoomKept = (std::size_t{1} << 20) / sizeof(Rep);

}  // namespace

SlotStack::~SlotStack() {
  std::free(begin_);
}

void SlotStack::grow() {
  const std::size_t slots = size();
  if (slots > kMostSlots / 2) {
    throw std::bad_alloc();
  }
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
  const std::size_t room = std::max(slots, kRoomKept);
  void* const memory = std::realloc(begin_, room * sizeof(Rep));
  if (memory != nullptr) {
    setMemory(memory, slots, room);
  }
}

void SlotStack::setMemory(void* memory, std::size_t slots, std::size_t room) noexcept {
  begin_ = static_cast<Rep*>(memory);
  end_ = begin_ + slots;
  limit_ = begin_ + room;
  // An eighth at a time, so that giving back takes constant time for each slot that was there.
  const std::size_t spared = std::max(kRoomKept, room / 8);
  shrinkBelow_ = room > 2 * kRoomKept ? limit_ - spared : begin_;
}

}  // namespace foundation::json::detail
