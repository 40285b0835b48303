#include "command/Arguments.h"

#include <charconv>
#include <cstddef>
#include <system_error>

#include <CLI/CLI.hpp>

#include "output/Text.h"

namespace update_metadata_tool::command {

CLI::Validator isUtf8Argument() {
  const auto refuse = [](const std::string& argument) {
    return output::isUtf8(argument) ? std::string() : std::string("the argument is not UTF-8");
  };
  return CLI::Validator(refuse, "");
}

CLI::Validator isCountArgument() {
  const auto refuse = [](const std::string& argument) {
    const char* const end = argument.data() + argument.size();
    std::size_t count = 0;
    const auto [stop, error] = std::from_chars(argument.data(), end, count);
    return error == std::errc() && stop == end
               ? std::string()
               : "'" + argument + "' is not a whole number, or is too large";
  };
  return CLI::Validator(refuse, "");
}

std::optional<std::u16string> toOptionalUtf16(const std::optional<std::string>& argument) {
  return argument ? std::optional(output::toUtf16(*argument)) : std::nullopt;
}

}  // namespace update_metadata_tool::command
