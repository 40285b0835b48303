// Keeps large blocks of memory for the next input. The address sanitizer would return each block to
// the system and get a new one, with new pages of shadow memory: a third of the time of a small
// document. A kept block is poisoned, as if it had been freed.

#include <sanitizer/asan_interface.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

// The sanitizer itself keeps smaller ones.
constexpr std::size_t kLarge = std::size_t{128} << 10;

struct Block {
  void* memory = nullptr;
  std::size_t size = 0;
  bool isUsed = false;
};

// Constant-initialized, because memory is requested before anything is set up.
std::array<Block, 4> blocks;

void* allocateArray(std::size_t size) noexcept {
  if (size < kLarge) {
    return std::malloc(size);
  }
  for (Block& block : blocks) {
    if (block.memory == nullptr) {
      block = {std::malloc(size), size, true};
      return block.memory;
    }
    if (!block.isUsed && block.size == size) {
      ASAN_UNPOISON_MEMORY_REGION(block.memory, size);
      block.isUsed = true;
      return block.memory;
    }
  }
  return std::malloc(size);
}

void releaseArray(void* memory) noexcept {
  for (Block& block : blocks) {
    if (memory != nullptr && block.memory == memory) {
      ASAN_POISON_MEMORY_REGION(memory, block.size);
      block.isUsed = false;
      return;
    }
  }
  std::free(memory);
}

}  // namespace

void* operator new[](std::size_t size) {
  void* const memory = allocateArray(size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocateArray(size);
}

void operator delete[](void* memory) noexcept {
  releaseArray(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
  releaseArray(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  releaseArray(memory);
}
