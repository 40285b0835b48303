#pragma once

#include <cstddef>
#include <new>

namespace test_support {

/// Makes one allocation fail while it lives: number `nth` from its start, from 0, throws
/// std::bad_alloc. All others succeed.
///
/// This header has two implementations. In an executable that links ump_failing_allocation,
/// operator new and operator delete are replaced, and so are realloc() and free() in statically
/// linked code. In one that links ump_failing_malloc, the allocation functions of C are replaced,
/// for the shared libraries that it uses as well: a failing allocation returns null with ENOMEM,
/// and operator new throws. One thread, and one object at a time.
class FailingAllocation {
 public:
  explicit FailingAllocation(std::size_t nth) noexcept;
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();

  /// Whether the failing allocation was attempted.
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

  /// Whether an allocation has failed.
  bool reached() const noexcept;
};

/// Returns how often memory was requested, whether or not it was granted.
std::size_t allocations() noexcept;

/// Returns how many allocated blocks have not been freed.
std::size_t liveBlocks() noexcept;

/// Calls `operation` with its first allocation failing, then with its second, and so on, until a
/// call makes no failing allocation. Calls `afterFailure` after each call that threw
/// std::bad_alloc. Returns how many allocations have failed.
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
