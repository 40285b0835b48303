// The form of FailingAllocation.h that takes the place of malloc() and its kin in the whole
// process: of what the library asks for, of what the standard library asks for on its behalf, and
// of what the system's library asks for to open a file or to throw an exception.

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <limits>

#include "support/FailingAllocation.h"

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
    errno = ENOMEM;
    return false;
  }
  if (untilFailure != kNever) {
    --untilFailure;
  }
  return true;
}

void* counted(void* memory) noexcept {
  live += memory != nullptr ? 1 : 0;
  return memory;
}

}  // namespace

// What replaces functions of the system has to be seen by the shared libraries that use them.
#pragma GCC visibility push(default)

// The system's library offers its functions under these names to whoever replaces them.
extern "C" {

void* __libc_malloc(std::size_t bytes);
void* __libc_calloc(std::size_t count, std::size_t bytes);
void* __libc_realloc(void* memory, std::size_t bytes);
void* __libc_memalign(std::size_t alignment, std::size_t bytes);
void __libc_free(void* memory);

void* malloc(std::size_t bytes) noexcept {
  return grants() ? counted(__libc_malloc(bytes)) : nullptr;
}

void* calloc(std::size_t count, std::size_t bytes) noexcept {
  return grants() ? counted(__libc_calloc(count, bytes)) : nullptr;
}

void* realloc(void* memory, std::size_t bytes) noexcept {
  if (!grants()) {
    return nullptr;
  }
  void* const moved = __libc_realloc(memory, bytes);
  if (memory == nullptr) {
    return counted(moved);
  }
  // With a size of 0 it frees.
  live -= moved == nullptr && bytes == 0 ? 1 : 0;
  return moved;
}

void* memalign(std::size_t alignment, std::size_t bytes) noexcept {
  return grants() ? counted(__libc_memalign(alignment, bytes)) : nullptr;
}

void* aligned_alloc(std::size_t alignment, std::size_t bytes) noexcept {
  return memalign(alignment, bytes);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t bytes) noexcept {
  void* const made = memalign(alignment, bytes);
  if (made == nullptr) {
    return ENOMEM;
  }
  *memory = made;
  return 0;
}

void free(void* memory) noexcept {
  live -= memory != nullptr ? 1 : 0;
  __libc_free(memory);
}

}  // extern "C"

#pragma GCC visibility pop

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
