// Implements FailingAllocation.h by replacing malloc() and its relatives throughout the process:
// for the library, for the standard library, and for the C library when it opens a file or throws
// an exception.

#include <cerrno>
#include <cstddef>
#include <cstdlib>

#include "support/AllocationCount.h"

namespace {

using test_support::countedAllocation;
using test_support::countRelease;

bool grants() noexcept {
  const bool granted = test_support::grantsAllocation();
  if (!granted) {
    errno = ENOMEM;
  }
  return granted;
}

}  // namespace

// Shared libraries must see these replacements of system functions.
#pragma GCC visibility push(default)

// The C library offers its functions under these names to their replacements.
extern "C" {

void* __libc_malloc(std::size_t bytes);
void* __libc_calloc(std::size_t count, std::size_t bytes);
void* __libc_realloc(void* memory, std::size_t bytes);
void* __libc_memalign(std::size_t alignment, std::size_t bytes);
void __libc_free(void* memory);

void* malloc(std::size_t bytes) noexcept {
  return grants() ? countedAllocation(__libc_malloc(bytes)) : nullptr;
}

void* calloc(std::size_t count, std::size_t bytes) noexcept {
  return grants() ? countedAllocation(__libc_calloc(count, bytes)) : nullptr;
}

void* realloc(void* memory, std::size_t bytes) noexcept {
  if (!grants()) {
    return nullptr;
  }
  void* const moved = __libc_realloc(memory, bytes);
  if (memory == nullptr) {
    return countedAllocation(moved);
  }
  // realloc() with a size of 0 frees the block.
  if (moved == nullptr && bytes == 0) {
    countRelease(memory);
  }
  return moved;
}

void* memalign(std::size_t alignment, std::size_t bytes) noexcept {
  return grants() ? countedAllocation(__libc_memalign(alignment, bytes)) : nullptr;
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
  countRelease(memory);
  __libc_free(memory);
}

}  // extern "C"

#pragma GCC visibility pop
