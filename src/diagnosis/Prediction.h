#pragma once

#include <optional>
#include <string>

#include "diagnosis/Finding.h"

namespace install::update_metadata_parser::diagnosis {

/// Has the library load a file with this text. Returns the exception that it throws, or nothing if
/// it loads the file. Only a lack of memory passes through as an exception.
std::optional<ThrownException> predictLoading(const std::string& file, const std::string& text);

}  // namespace install::update_metadata_parser::diagnosis
