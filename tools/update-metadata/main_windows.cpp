#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <ios>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "output/Text.h"
#include "program/Run.h"

namespace {

/// Makes the console read and write UTF-8 while it exists.
class Utf8Console {
 public:
  Utf8Console() : inputBefore_(::GetConsoleCP()), outputBefore_(::GetConsoleOutputCP()) {
    ::SetConsoleCP(CP_UTF8);
    ::SetConsoleOutputCP(CP_UTF8);
  }
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;
  ~Utf8Console() {
    // They belong to the console, which the next program uses.
    ::SetConsoleCP(inputBefore_);
    ::SetConsoleOutputCP(outputBefore_);
  }

 private:
  UINT inputBefore_;
  UINT outputBefore_;
};

// An argument with an unpaired surrogate gets a byte that makes it no UTF-8, so that it is rejected
// instead of changed.
std::string toArgument(std::wstring_view wide) {
  const std::u16string text(wide.begin(), wide.end());
  std::string argument = update_metadata_tool::output::toUtf8(text);
  if (!update_metadata_tool::output::isUtf16(text)) {
    argument += '\xFF';
  }
  return argument;
}

// Not those of main(), which are in the code page of the system.
std::vector<std::string> readArguments() {
  std::vector<std::string> arguments;
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  for (int index = 0; words != nullptr && index != count; ++index) {
    arguments.push_back(toArgument(words[index]));
  }
  ::LocalFree(words);
  return arguments;
}

}  // namespace

int main() {
  for (std::FILE* const stream : {stdin, stdout, stderr}) {
    ::_setmode(::_fileno(stream), _O_BINARY);
  }
  const Utf8Console console;
  std::ios_base::sync_with_stdio(false);
  std::cout.exceptions(std::ios_base::badbit);
  const std::vector<std::string> arguments = readArguments();
  std::vector<const char*> words;
  for (const std::string& argument : arguments) {
    words.push_back(argument.c_str());
  }
  const int status =
      update_metadata_tool::program::run(static_cast<int>(words.size()), words.data());
  std::cout.flush();
  return status;
}
