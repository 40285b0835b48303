#pragma once

#include <filesystem>
#include <string>

namespace test_support {

/// Returns the text in the file at `path`, with which a test compares `now`.
///
/// If UMP_UPDATE_GOLDEN is set in the environment, `now` is first written to the file: this is how
/// scripts/update-golden rewrites it. Throws std::runtime_error if the file cannot be written or
/// read.
std::string storedText(const std::filesystem::path& path, const std::string& now);

}  // namespace test_support
