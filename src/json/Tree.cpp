#include "json/Tree.h"

#include <algorithm>

namespace foundation::json::detail {

std::string_view Tree::storeLong(std::string&& string) {
  const std::size_t size = string.size();
  if (string.capacity() / 2 <= size) {
    // Moving the string does not move its bytes.
    longStrings_.push_back(std::move(string));
    return longStrings_.back();
  }
  char* const copy = addBlock(size);
  string.copy(copy, size);
  return {copy, size};
}

void* Tree::allocateFromNewUnit(std::size_t bytes) {
  if (bytes > kLargestPiece) {
    // The rest of the newest unit stays in use.
    return beginUnit(addBlock(sizeof(NodeUnit) + bytes), this);
  }
  addUnit();
  return std::exchange(position_, position_ + bytes);
}

void Tree::addUnit() {
  if (nextUnit_ == blockEnd_) {
    const std::size_t bytes =
        std::min(kLargestBlock, std::max(NodeUnit::kBytes, blockBytes_ * kGrowth));
    nextUnit_ = addBlock(bytes);
    blockEnd_ = nextUnit_ + bytes;
    blockBytes_ = bytes;
  }
  position_ = beginUnit(nextUnit_, this);
  nextUnit_ += NodeUnit::kBytes;
  end_ = nextUnit_;
}

char* Tree::addBlock(std::size_t bytes) {
  // Large blocks consist of large pages, if the system has them.
  const auto alignment =
      static_cast<std::align_val_t>(bytes < core::kLargePage ? NodeUnit::kBytes : core::kLargePage);
  std::unique_ptr<char, Delete> block(static_cast<char*>(::operator new(bytes, alignment)),
                                      Delete{alignment});
  core::adviseLargePages(block.get(), bytes);
  blocks_.push_back(std::move(block));
  return blocks_.back().get();
}

}  // namespace foundation::json::detail
