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
  begin_ = static_cast<Rep*>(memory);
  end_ = begin_ + slots;
  limit_ = begin_ + room;
  core::adviseLargePages(begin_, room * sizeof(Rep));
}

void SlotStack::shrink() noexcept {
  const std::size_t slots = size();
  const auto room = static_cast<std::size_t>(limit_ - begin_);
  // An eighth at a time, so that giving back takes constant time for each slot that was there.
  const std::size_t wanted = std::max(slots, kRoomKept);
  if (room - wanted < room / 8) {
    return;
  }
  void* const memory = std::realloc(begin_, wanted * sizeof(Rep));
  if (memory != nullptr) {
    begin_ = static_cast<Rep*>(memory);
    end_ = begin_ + slots;
    limit_ = begin_ + wanted;
  }
}

}  // namespace foundation::json::detail
