#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "install/update_metadata_parser/Diagnosis.h"

namespace install::update_metadata_parser::diagnosis {

/// Has the library load the document at `path`, which has this text. Returns the exception that it
/// throws, or nothing if it loads the document. Only a lack of memory passes through as an
/// exception.
std::optional<ThrownException> predictLoading(const std::u16string& path, std::string_view text);

}  // namespace install::update_metadata_parser::diagnosis
