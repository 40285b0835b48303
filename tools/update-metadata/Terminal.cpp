#include "Terminal.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace update_metadata_tool {
namespace {

std::string_view environment(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

bool isOutputColoured() {
  return ::isatty(STDOUT_FILENO) == 1 && environment("NO_COLOR").empty() &&
         environment("TERM") != "dumb";
}

bool isErrorTerminal() {
  return ::isatty(STDERR_FILENO) == 1;
}

}  // namespace update_metadata_tool
