#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace mf::zero {

/// Memory for texts and rows that are kept: allocated piece by piece and freed as a whole.
class BlockMemory {
 public:
  BlockMemory() noexcept = default;
  BlockMemory(const BlockMemory&) = delete;
  BlockMemory& operator=(const BlockMemory&) = delete;

  /// Returns `bytes` of memory, aligned for a pointer or a number of 64 bits; it is valid as long
  /// as this object. \throws std::bad_alloc  nothing has changed then
  void* allocate(std::size_t bytes);

 private:
  char* addBlock(std::size_t bytes);

  std::vector<std::unique_ptr<char[]>> blocks_;
  char* position_ = nullptr;  // in the newest block that is shared by several pieces
  std::size_t left_ = 0;
  std::size_t nextBlock_ = 0;
};

}  // namespace mf::zero
