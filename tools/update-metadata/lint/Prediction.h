#pragma once

#include <optional>
#include <string>

#include "lint/Finding.h"

namespace update_metadata_tool::lint {

/// Asks the library what it makes of a file with this text: the exception that it throws, nothing
/// if it loads. Only the lack of memory passes through.
std::optional<ThrownException> predictLoading(const std::string& file, const std::string& text);

}  // namespace update_metadata_tool::lint
