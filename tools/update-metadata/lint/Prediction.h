#pragma once

#include <optional>
#include <string>

#include "lint/Finding.h"

namespace update_metadata_tool::lint {

/// Has the library load a file with this text. Returns the exception that it throws, or nothing if
/// it loads the file. Only a lack of memory passes through as an exception.
std::optional<ThrownException> predictLoading(const std::string& file, const std::string& text);

}  // namespace update_metadata_tool::lint
