#pragma once

#include <filesystem>
#include <string>

namespace test_support {

/// The text in the file at `path`, with which a test compares `now`.
///
/// With UMP_UPDATE_GOLDEN in the environment, `now` is written there first: that is how
/// scripts/update-golden makes the file anew. Throws std::runtime_error if the file cannot be
/// written or read.
std::string storedText(const std::filesystem::path& path, const std::string& now);

}  // namespace test_support
