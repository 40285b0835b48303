#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace test_support {

/// How many levels the depth tests make: UMP_DEPTH_LEVELS in the environment, otherwise a million,
/// or a hundred thousand with a sanitizer, where they take many times as long.
std::size_t levels();

/// Runs `work` in its own thread and waits for it; rethrows what it throws. The stack has
/// UMP_DEPTH_STACK bytes, otherwise 256 KiB: far too small for one frame per level.
void runWithSmallStack(const std::function<void()>& work);

/// Returns a text repeated `times` times.
std::string repeated(std::string_view text, std::size_t times);

}  // namespace test_support
