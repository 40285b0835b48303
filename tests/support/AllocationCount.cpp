#include "support/AllocationCount.h"

#include <limits>

#include "support/FailingAllocation.h"

namespace test_support {
namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

std::size_t requests = 0;
std::size_t live = 0;
std::size_t untilFailure = kNever;  // allocations that still succeed; kNever for all
bool failed = false;
bool keepsFailing = false;

}  // namespace

bool grantsAllocation() noexcept {
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

void* countedAllocation(void* memory) noexcept {
  live += memory != nullptr ? 1 : 0;
  return memory;
}

void countRelease(const void* memory) noexcept {
  live -= memory != nullptr ? 1 : 0;
}

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
