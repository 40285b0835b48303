#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/core/large_pages.h"
#include "foundation/json/Storage.h"
#include "foundation/json/Value.h"

namespace foundation::json::detail {

/// Storage of a whole value tree: the text that its strings refer to, and the nodes of its
/// containers, in blocks that are freed together. Values in it hold no references.
///
/// Blocks consist of units; nodes are placed so that Storage::of() finds this storage by their
/// address.
class Tree final : public Storage {
 public:
  /// Takes ownership of the text.
  // cppcheck-suppress passedByValue ; it is moved into the tree
  explicit Tree(std::string text) noexcept : text_(std::move(text)) {}

  /// The text, which stays at its address as long as the tree lives.
  std::string_view text() const noexcept { return text_; }

  /// Returns memory for the nodes of a container, values or members. It lives as long as the tree.
  void* allocateNodes(std::size_t bytes) {
    if constexpr (sizeof(Member) % kUnitAlignment != 0) {
      bytes = (bytes + kUnitAlignment - 1) & ~(kUnitAlignment - 1);
    }
    if (bytes > static_cast<std::size_t>(end_ - position_)) {
      return allocateFromNewUnit(bytes);
    }
    return std::exchange(position_, position_ + bytes);
  }

  /// Returns the bytes of a string; they live as long as the tree.
  std::string_view store(std::string&& string) {
    const std::size_t size = string.size();
    if (size > kLargestPiece) {
      return storeLong(std::move(string));
    }
    if (size > static_cast<std::size_t>(end_ - position_)) {
      addUnit();
    }
    // Strings are placed from the other end, so that nodes stay aligned.
    end_ -= size;
    string.copy(end_, size);
    return {end_, size};
  }

  /// Releases the unused parts of large pages. To be called after the last allocation.
  void finish() noexcept {
    if (blockBytes_ >= core::kLargePage) {
      core::discardPages(position_, static_cast<std::size_t>(end_ - position_));
      core::discardPages(nextUnit_, static_cast<std::size_t>(blockEnd_ - nextUnit_));
    }
  }

 private:
  ~Tree() override = default;

  void dismantle(Storage*&) noexcept override { delete this; }

  std::string_view storeLong(std::string&& string);
  void* allocateFromNewUnit(std::size_t bytes);
  void addUnit();
  char* addBlock(std::size_t bytes);

  static char* beginUnit(char* unit, Storage* storage) noexcept {
    new (unit) NodeUnit{storage};
    return unit + sizeof(NodeUnit);
  }

  // Larger requests get their own block, so that little of a unit stays unused.
  static constexpr std::size_t kLargestPiece = NodeUnit::kBytes / 2;
  // Blocks grow by this factor up to this size.
  static constexpr std::size_t kGrowth = 4;
  static constexpr std::size_t kLargestBlock = 2 * core::kLargePage;

  struct Delete {
    std::align_val_t alignment;
    void operator()(char* block) const noexcept { ::operator delete(block, alignment); }
  };

  std::string text_;
  std::vector<std::string> longStrings_;
  std::vector<std::unique_ptr<char, Delete>> blocks_;
  char* position_ = nullptr;  // start of the free part of the newest unit
  char* end_ = nullptr;
  char* nextUnit_ = nullptr;  // the next free unit of the newest block
  char* blockEnd_ = nullptr;
  std::size_t blockBytes_ = 0;
};

}  // namespace foundation::json::detail
