#include "terminal/Console.h"

#include <windows.h>

namespace update_metadata_tool::terminal {
namespace {

HANDLE handleOf(Stream stream) {
  switch (stream) {
    case Stream::kInput:
      return ::GetStdHandle(STD_INPUT_HANDLE);
    case Stream::kOutput:
      return ::GetStdHandle(STD_OUTPUT_HANDLE);
    case Stream::kError:
      break;
  }
  return ::GetStdHandle(STD_ERROR_HANDLE);
}

}  // namespace

bool isTerminal(Stream stream) {
  // Other devices, such as NUL, have no mode.
  DWORD mode = 0;
  return ::GetConsoleMode(handleOf(stream), &mode) != 0;
}

bool canObeyEscapes(Stream stream) {
  DWORD mode = 0;
  return ::GetConsoleMode(handleOf(stream), &mode) != 0 &&
         ::SetConsoleMode(handleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::optional<std::size_t> columnsOf(Stream stream) {
  CONSOLE_SCREEN_BUFFER_INFO console{};
  if (::GetConsoleScreenBufferInfo(handleOf(stream), &console) == 0) {
    return std::nullopt;
  }
  const int columns = console.srWindow.Right - console.srWindow.Left + 1;
  return columns > 0 ? std::optional(static_cast<std::size_t>(columns)) : std::nullopt;
}

const char* const kEndOfInputKeys = "Ctrl-Z and Enter";

}  // namespace update_metadata_tool::terminal
