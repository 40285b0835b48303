#include "terminal/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace update_metadata_tool::terminal {
namespace {

constexpr std::size_t kUsualColumns = 80;
constexpr std::size_t kFewestColumns = 20;

std::string_view environment(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

// A dumb terminal shows escape sequences as text.
bool understandsEscapes(int descriptor) {
  return ::isatty(descriptor) == 1 && environment("TERM") != "dumb";
}

// 0 if the environment does not contain a number.
std::size_t columnsOfEnvironment() {
  const std::string_view text = environment("COLUMNS");
  const char* const end = text.data() + text.size();
  std::size_t columns = 0;
  const auto [stop, error] = std::from_chars(text.data(), end, columns);
  return error == std::errc() && stop == end ? columns : 0;
}

// Of a terminal.
std::size_t columnsOf(int descriptor) {
  winsize size{};
  const bool isKnown = ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
  return isKnown ? size.ws_col : kUsualColumns;
}

std::size_t columnsOfOutput() {
  return isOutputTerminal() ? columnsOf(STDOUT_FILENO) : kUnlimitedColumns;
}

}  // namespace

bool isOutputColored() {
  return understandsEscapes(STDOUT_FILENO) && environment("NO_COLOR").empty();
}

bool isOutputTerminal() {
  return ::isatty(STDOUT_FILENO) == 1;
}

bool isInputTerminal() {
  return ::isatty(STDIN_FILENO) == 1;
}

std::size_t outputColumns() {
  const std::size_t columns = columnsOfEnvironment();
  return std::max(columns != 0 ? columns : columnsOfOutput(), kFewestColumns);
}

std::optional<std::size_t> errorTerminalColumns() {
  return understandsEscapes(STDERR_FILENO) ? std::optional(columnsOf(STDERR_FILENO)) : std::nullopt;
}

}  // namespace update_metadata_tool::terminal
