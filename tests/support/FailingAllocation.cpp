// Implements FailingAllocation.h by replacing operator new, and realloc() in statically linked
// code.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "support/AllocationCount.h"

namespace {

using test_support::countedAllocation;
using test_support::countRelease;
using test_support::grantsAllocation;

void* allocate(std::size_t bytes, std::size_t alignment = alignof(std::max_align_t)) noexcept {
  if (!grantsAllocation()) {
    return nullptr;
  }
  const std::size_t size = (bytes + alignment - 1) / alignment * alignment;
  return countedAllocation(std::aligned_alloc(alignment, size != 0 ? size : alignment));
}

void* allocateOrThrow(std::size_t bytes, std::size_t alignment = alignof(std::max_align_t)) {
  void* memory = allocate(bytes, alignment);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

// Blocks from realloc(), which free() must distinguish from all others.
std::array<void*, 256> reallocated{};

// Replaces `block` by `replacement` in the table; returns whether `block` was in it.
bool replaceReallocated(void* block, void* replacement) noexcept {
  const auto place = std::find(reallocated.begin(), reallocated.end(), block);
  if (place == reallocated.end()) {
    return false;
  }
  *place = replacement;
  return true;
}

}  // namespace

// The linker replaces realloc() and free() by these in the code under test, and provides access to
// the original functions.
extern "C" {

void* __real_realloc(void* memory, std::size_t bytes);
void __real_free(void* memory);

void* __wrap_realloc(void* memory, std::size_t bytes) {
  if (!grantsAllocation()) {
    return nullptr;
  }
  void* const moved = __real_realloc(memory, bytes);
  if (moved != nullptr) {
    if (memory == nullptr) {
      countedAllocation(moved);
    }
    if (!replaceReallocated(memory, moved)) {
      std::abort();  // the table of blocks is full
    }
  }
  return moved;
}

void __wrap_free(void* memory) {
  if (memory != nullptr && replaceReallocated(memory, nullptr)) {
    countRelease(memory);
  }
  __real_free(memory);
}

}  // extern "C"

namespace {

void release(void* memory) noexcept {
  countRelease(memory);
  __real_free(memory);
}

}  // namespace

void* operator new(std::size_t bytes) {
  return allocateOrThrow(bytes);
}
void* operator new[](std::size_t bytes) {
  return allocateOrThrow(bytes);
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
  return allocate(bytes);
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
  return allocate(bytes);
}
void* operator new(std::size_t bytes, std::align_val_t alignment) {
  return allocateOrThrow(bytes, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept {
  release(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
  release(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
  release(memory);
}
void operator delete[](void* memory) noexcept {
  release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  release(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  release(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  release(memory);
}
