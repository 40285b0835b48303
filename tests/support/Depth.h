#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace test_support {

/// How many levels the tests of depth make: UMP_DEPTH_LEVELS in the environment, else a million.
std::size_t levels();

/// Runs `work` in a thread of its own whose stack has UMP_DEPTH_STACK bytes, else 256 KiB, which is
/// far too small for a frame a level. Waits for it; what it throws is thrown again here.
void runWithSmallStack(const std::function<void()>& work);

/// Returns a text `times` times.
std::string repeated(std::string_view text, std::size_t times);

}  // namespace test_support
