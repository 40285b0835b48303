#include "terminal/Terminal.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "terminal/Console.h"

namespace update_metadata_tool::terminal {
namespace {

constexpr std::size_t kUsualColumns = 80;
constexpr std::size_t kFewestColumns = 20;

std::string_view environment(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

// A dumb terminal shows escape sequences as text.
bool understandsEscapes(Stream stream) {
  return environment("TERM") != "dumb" && canObeyEscapes(stream);
}

// 0 if the environment does not contain a number.
std::size_t columnsOfEnvironment() {
  const std::string_view text = environment("COLUMNS");
  const char* const end = text.data() + text.size();
  std::size_t columns = 0;
  const auto [stop, error] = std::from_chars(text.data(), end, columns);
  return error == std::errc() && stop == end ? columns : 0;
}

std::size_t columnsOfOutput() {
  return isOutputTerminal() ? columnsOf(Stream::kOutput).value_or(kUsualColumns)
                            : kUnlimitedColumns;
}

}  // namespace

bool isOutputColored() {
  return understandsEscapes(Stream::kOutput) && environment("NO_COLOR").empty();
}

bool isOutputTerminal() {
  return isTerminal(Stream::kOutput);
}

bool isInputTerminal() {
  return isTerminal(Stream::kInput);
}

std::size_t outputColumns() {
  const std::size_t columns = columnsOfEnvironment();
  return std::max(columns != 0 ? columns : columnsOfOutput(), kFewestColumns);
}

std::optional<std::size_t> errorTerminalColumns() {
  return understandsEscapes(Stream::kError)
             ? std::optional(columnsOf(Stream::kError).value_or(kUsualColumns))
             : std::nullopt;
}

}  // namespace update_metadata_tool::terminal
