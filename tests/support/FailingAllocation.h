#pragma once

#include <cstddef>
#include <new>

namespace test_support {

/// Makes one allocation fail while it lives: the `nth` from its start, from 0, throws
/// std::bad_alloc. Those before and after it succeed.
///
/// There are two forms of what stands here. An executable that links ump_failing_allocation has its
/// operator new and operator delete replaced, and realloc() and free() of what is linked
/// statically. One that links ump_failing_malloc has the allocation functions of C replaced, also
/// for the shared libraries that it uses: there an allocation that fails returns null with ENOMEM,
/// and operator new throws as it does for its user. One thread, and one object at a time.
class FailingAllocation {
 public:
  explicit FailingAllocation(std::size_t nth) noexcept;
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();

  /// Tells whether the allocation that fails has been made.
  bool reached() const noexcept;
};

/// Lets the first `count` allocations from its start succeed while it lives; every later one throws
/// std::bad_alloc.
class MemoryLimit {
 public:
  explicit MemoryLimit(std::size_t count) noexcept;
  MemoryLimit(const MemoryLimit&) = delete;
  MemoryLimit& operator=(const MemoryLimit&) = delete;
  ~MemoryLimit();

  /// Tells whether an allocation has failed.
  bool reached() const noexcept;
};

/// Tells how often memory has been asked for, in vain or not.
std::size_t allocations() noexcept;

/// Tells how many blocks of memory have been allocated by those and not been freed.
std::size_t liveBlocks() noexcept;

/// Calls `operation` with its first allocation failing, then with its second, and so on, until none
/// is left to fail. Calls `afterFailure` after each call that threw std::bad_alloc. Returns how
/// many allocations have failed.
template <class Operation, class AfterFailure>
std::size_t failEachAllocation(Operation operation, AfterFailure afterFailure) {
  for (std::size_t nth = 0;; ++nth) {
    try {
      const FailingAllocation failing(nth);
      operation();
      if (!failing.reached()) {
        return nth;
      }
    } catch (const std::bad_alloc&) {
      afterFailure();
    }
  }
}

}  // namespace test_support
