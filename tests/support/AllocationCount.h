#pragma once

namespace test_support {

// What the functions that replace those for memory tell FailingAllocation.h of.

/// Counts a request for memory and tells whether it is to succeed.
bool grantsAllocation() noexcept;

/// Counts a block that was given out, unless it is null; returns it.
void* countedAllocation(void* memory) noexcept;

/// Counts a block, unless it is null, as given back.
void countRelease(const void* memory) noexcept;

}  // namespace test_support
