#include "mf/zero/memory/BlockMemory.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <utility>

#include "foundation/core/large_pages.h"

namespace mf::zero {
namespace {

// Blocks double in size: little memory for few texts, and few blocks for many.
constexpr std::size_t kFirstBlock = 1024;
constexpr std::size_t kLargestBlock = std::size_t{32} << 20;
constexpr std::size_t kLargestShare = std::size_t{256} << 10;

constexpr std::size_t kAlignment = std::max(alignof(void*), alignof(std::int64_t));

}  // namespace

void* BlockMemory::allocate(std::size_t bytes) {
  if (bytes > std::numeric_limits<std::size_t>::max() / 2) {
    throw std::bad_alloc();
  }
  bytes = (bytes + kAlignment - 1) & ~(kAlignment - 1);
  if (bytes > left_) {
    if (bytes > kLargestShare) {
      // A separate block keeps the rest of the newest one in use.
      return addBlock(bytes);
    }
    nextBlock_ = std::min(kLargestBlock, std::max(kFirstBlock, nextBlock_ * 2));
    const std::size_t size = std::max(nextBlock_, bytes);
    position_ = addBlock(size);
    left_ = size;
  }
  left_ -= bytes;
  return std::exchange(position_, position_ + bytes);
}

char* BlockMemory::addBlock(std::size_t bytes) {
  std::unique_ptr<char[]> block(new char[bytes]);
  blocks_.push_back(std::move(block));
  if (bytes >= foundation::core::kLargePagesFrom) {
    foundation::core::adviseLargePages(blocks_.back().get(), bytes);
  }
  return blocks_.back().get();
}

}  // namespace mf::zero
