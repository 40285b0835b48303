// The form of FailingAllocation.h that takes the place of malloc() and its kin in the whole
// process: of what the library asks for, of what the standard library asks for on its behalf, and
// of what the system's library asks for to open a file or to throw an exception.

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
  // With a size of 0 it frees.
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
