#include "support/FailingAllocation.h"

#include <cstdlib>
#include <limits>

namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

std::size_t requests = 0;
std::size_t live = 0;
std::size_t untilFailure = kNever;  // allocations that still succeed; kNever: all of them do
bool failed = false;
bool keepsFailing = false;

void* allocate(std::size_t bytes) noexcept {
  ++requests;
  if (untilFailure == 0) {
    untilFailure = keepsFailing ? 0 : kNever;
    failed = true;
    return nullptr;
  }
  if (untilFailure != kNever) {
    --untilFailure;
  }
  void* memory = std::malloc(bytes != 0 ? bytes : 1);
  live += memory != nullptr ? 1 : 0;
  return memory;
}

void* allocateOrThrow(std::size_t bytes) {
  void* memory = allocate(bytes);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void release(void* memory) noexcept {
  live -= memory != nullptr ? 1 : 0;
  std::free(memory);
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
void operator delete(void* memory) noexcept {
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
  keepsFailing = true;
  untilFailure = count;
}

MemoryLimit::~MemoryLimit() {
  keepsFailing = false;
  untilFailure = kNever;
}

std::size_t allocations() noexcept {
  return requests;
}

std::size_t liveBlocks() noexcept {
  return live;
}

}  // namespace test_support
