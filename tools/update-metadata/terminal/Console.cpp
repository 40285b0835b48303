#include "terminal/Console.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace update_metadata_tool::terminal {
namespace {

int descriptorOf(Stream stream) {
  switch (stream) {
    case Stream::kInput:
      return STDIN_FILENO;
    case Stream::kOutput:
      return STDOUT_FILENO;
    case Stream::kError:
      break;
  }
  return STDERR_FILENO;
}

}  // namespace

bool isTerminal(Stream stream) {
  return ::isatty(descriptorOf(stream)) == 1;
}

bool canObeyEscapes(Stream stream) {
  return isTerminal(stream);
}

std::optional<std::size_t> columnsOf(Stream stream) {
  winsize size{};
  const bool isKnown = ::ioctl(descriptorOf(stream), TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
  return isKnown ? std::optional<std::size_t>(size.ws_col) : std::nullopt;
}

const char* const kEndOfInputKeys = "Ctrl-D";

}  // namespace update_metadata_tool::terminal
