#pragma once

#include <optional>
#include <string>

#include "command/CommandLineFwd.h"

namespace update_metadata_tool::command {

/// Rejects an argument that is not UTF-8.
CLI::Validator isUtf8Argument();

/// Rejects an argument that is not a decimal number that fits into a std::size_t.
CLI::Validator isCountArgument();

/// Converts an optional argument to UTF-16.
///
/// \pre the argument has passed isUtf8Argument()
std::optional<std::u16string> toOptionalUtf16(const std::optional<std::string>& argument);

}  // namespace update_metadata_tool::command
