#include "Arguments.h"

#include "Text.h"

namespace update_metadata_tool {

CLI::Validator isUtf8Argument() {
  const auto refuse = [](const std::string& argument) {
    return isUtf8(argument) ? std::string() : std::string("the argument is not UTF-8");
  };
  return CLI::Validator(refuse, "");
}

std::optional<std::u16string> toOptionalUtf16(const std::optional<std::string>& argument) {
  return argument ? std::optional(toUtf16(*argument)) : std::nullopt;
}

}  // namespace update_metadata_tool
