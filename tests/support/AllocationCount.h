#pragma once

namespace test_support {

// The replaced allocation functions report to FailingAllocation.h through these.

/// Counts a request for memory and returns whether it is to succeed.
bool grantsAllocation() noexcept;

/// Counts an allocated block, unless it is null; returns it.
void* countedAllocation(void* memory) noexcept;

/// Counts a block, unless it is null, as freed.
void countRelease(const void* memory) noexcept;

}  // namespace test_support
