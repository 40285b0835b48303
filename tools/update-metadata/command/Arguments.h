#pragma once

#include <optional>
#include <string>

#include "command/CommandLineFwd.h"

namespace update_metadata_tool::command {

/// Refuses an argument that is not UTF-8.
CLI::Validator isUtf8Argument();

/// Refuses an argument that is not the decimal digits of a number that a std::size_t holds.
CLI::Validator isCountArgument();

/// The argument in UTF-16, if there is one.
///
/// \pre isUtf8Argument() has let it pass
std::optional<std::u16string> toOptionalUtf16(const std::optional<std::string>& argument);

}  // namespace update_metadata_tool::command
