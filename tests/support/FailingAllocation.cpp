#include "support/FailingAllocation.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

std::size_t requests = 0;
std::size_t live = 0;
std::size_t untilFailure = kNever;  // allocations that still succeed; kNever: all of them do
bool failed = false;
bool keepsFailing = false;

// Counts a request and tells whether it is to succeed.
bool grants() noexcept {
  ++requests;
  if (untilFailure == 0) {
    untilFailure = keepsFailing ? 0 : kNever;
    failed = true;
    return false;
  }
  if (untilFailure != kNever) {
    --untilFailure;
  }
  return true;
}

void* allocate(std::size_t bytes, std::size_t alignment = alignof(std::max_align_t)) noexcept {
  if (!grants()) {
    return nullptr;
  }
  const std::size_t size = (bytes + alignment - 1) / alignment * alignment;
  void* memory = std::aligned_alloc(alignment, size != 0 ? size : alignment);
  live += memory != nullptr ? 1 : 0;
  return memory;
}

void* allocateOrThrow(std::size_t bytes, std::size_t alignment = alignof(std::max_align_t)) {
  void* memory = allocate(bytes, alignment);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

// Blocks that came from realloc(), which free() has to tell from those that came from elsewhere.
std::array<void*, 256> reallocated{};

// Puts `replacement` in the place of `block`; tells whether `block` was there.
bool replaceReallocated(void* block, void* replacement) noexcept {
  const auto place = std::find(reallocated.begin(), reallocated.end(), block);
  if (place == reallocated.end()) {
    return false;
  }
  *place = replacement;
  return true;
}

}  // namespace

// The linker puts these in the place of realloc() and free() for the code that is tested, and gives
// access to the functions themselves.
extern "C" {

void* __real_realloc(void* memory, std::size_t bytes);
void __real_free(void* memory);

void* __wrap_realloc(void* memory, std::size_t bytes) {
  if (!grants()) {
    return nullptr;
  }
  void* const moved = __real_realloc(memory, bytes);
  if (moved != nullptr) {
    live += memory == nullptr ? 1 : 0;
    if (!replaceReallocated(memory, moved)) {
      std::abort();  // more blocks at a time than there are places for
    }
  }
  return moved;
}

void __wrap_free(void* memory) {
  if (memory != nullptr && replaceReallocated(memory, nullptr)) {
    --live;
  }
  __real_free(memory);
}

}  // extern "C"

namespace {

void release(void* memory) noexcept {
  live -= memory != nullptr ? 1 : 0;
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

namespace test_support {

FailingAllocation::FailingAllocation(std::size_t nth) noexcept {
  failed = false;
  untilFailure = nth;
}

FailingAllocation::~FailingAllocation() {
  untilFailure = kNever;
}

bool FailingAllocation::reached() const noexcept {
  return failed;
}

MemoryLimit::MemoryLimit(std::size_t count) noexcept {
  failed = false;
  keepsFailing = true;
  untilFailure = count;
}

MemoryLimit::~MemoryLimit() {
  keepsFailing = false;
  untilFailure = kNever;
}

bool MemoryLimit::reached() const noexcept {
  return failed;
}

std::size_t allocations() noexcept {
  return requests;
}

std::size_t liveBlocks() noexcept {
  return live;
}

}  // namespace test_support
