#pragma once

#include <cstddef>
#include <functional>

namespace test_support {

/// The stack of runWithSmallStack(), in bytes.
constexpr std::size_t kSmallStackBytes = 256 * 1024;

/// Runs `work` in a thread of its own whose stack is small, and waits for it. What it throws is
/// thrown again here.
void runWithSmallStack(const std::function<void()>& work);

}  // namespace test_support
