#include "mf/zero/StringPool.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace mf::zero {
namespace {

constexpr std::size_t kFirstTable = 64;
constexpr std::size_t kFirstBlock = 1024;
constexpr std::size_t kLargestBlock = std::size_t{1} << 20;

// Four units a step, multiplied and folded: names are short and are hashed once for each element.
std::size_t hashOf(std::u16string_view text) noexcept {
  constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15u;  // 2^64 over the golden ratio
  std::uint64_t hash = text.size() * kFactor;
  const char16_t* position = text.data();
  std::size_t left = text.size();
  for (; left >= 4; left -= 4, position += 4) {
    std::uint64_t word;
    std::memcpy(&word, position, sizeof word);
    hash = (hash ^ word) * kFactor;
    hash ^= hash >> 32;
  }
  for (; left != 0; --left, ++position) {
    hash = (hash ^ *position) * kFactor;
  }
  return static_cast<std::size_t>(hash ^ (hash >> 32));
}

}  // namespace

const InternedString& StringPool::intern(std::u16string_view text) {
  if (used_ * 2 >= table_.size()) {
    growTable();
  }
  const std::size_t hash = hashOf(text);
  const std::size_t mask = table_.size() - 1;
  std::size_t place = hash & mask;
  while (table_[place] != nullptr) {
    const InternedString& stored = *table_[place];
    // A view of nothing need not have an address.
    if (stored.hash == hash && stored.size == text.size() &&
        (text.empty() ||
         std::memcmp(stored.view().data(), text.data(), text.size() * sizeof(char16_t)) == 0)) {
      return stored;
    }
    place = (place + 1) & mask;
  }
  if (text.size() > (std::numeric_limits<std::size_t>::max() / 4)) {
    throw std::bad_alloc();
  }
  const std::size_t bytes = text.size() * sizeof(char16_t);
  auto* string = new (allocate(sizeof(InternedString) + bytes)) InternedString{hash, text.size()};
  if (bytes != 0) {
    std::memcpy(string + 1, text.data(), bytes);
  }
  table_[place] = string;
  ++used_;
  return *string;
}

void StringPool::growTable() {
  std::vector<const InternedString*> larger(std::max(kFirstTable, table_.size() * 2));
  const std::size_t mask = larger.size() - 1;
  for (const InternedString* string : table_) {
    if (string != nullptr) {
      std::size_t place = string->hash & mask;
      while (larger[place] != nullptr) {
        place = (place + 1) & mask;
      }
      larger[place] = string;
    }
  }
  table_.swap(larger);
}

char* StringPool::allocate(std::size_t bytes) {
  bytes = (bytes + alignof(InternedString) - 1) & ~(alignof(InternedString) - 1);
  if (bytes > left_) {
    if (bytes > kLargestBlock / 4) {
      // A block of its own leaves the rest of the newest small block in use.
      return addBlock(bytes);
    }
    nextBlock_ = std::min(kLargestBlock, std::max(kFirstBlock, nextBlock_ * 2));
    const std::size_t size = std::max(nextBlock_, bytes);
    position_ = addBlock(size);
    left_ = size;
  }
  char* memory = position_;
  position_ += bytes;
  left_ -= bytes;
  return memory;
}

char* StringPool::addBlock(std::size_t bytes) {
  std::unique_ptr<char[]> block(new char[bytes]);
  blocks_.push_back(std::move(block));
  return blocks_.back().get();
}

}  // namespace mf::zero
