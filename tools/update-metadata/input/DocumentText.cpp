#include "input/DocumentText.h"

#include <cstddef>
#include <ios>
#include <iostream>

#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "output/Text.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::input {
namespace {

constexpr std::size_t kBytesAtOnce = std::size_t{64} << 10U;

// Without this, users who name standard input but redirect nothing to it would wait for a command
// that is waiting for them.
void promptForTyping(terminal::ProgressLine& progress) {
  progress.clear();
  std::cerr << "update-metadata: reading the document from the terminal; end it with Ctrl-D\n"
            << std::flush;
}

std::string readStandardInput(terminal::ProgressLine& progress) {
  if (terminal::isInputTerminal()) {
    promptForTyping(progress);
  }
  std::string text;
  try {
    for (;;) {
      const std::size_t size = text.size();
      text.resize(size + kBytesAtOnce);
      const auto got = static_cast<std::size_t>(
          std::cin.rdbuf()->sgetn(text.data() + size, static_cast<std::streamsize>(kBytesAtOnce)));
      text.resize(size + got);
      if (got < kBytesAtOnce) {
        return text;
      }
      progress.update();
    }
  } catch (const std::ios_base::failure& failure) {
    throw std::ios_base::failure("standard input cannot be read", failure.code());
  }
}

}  // namespace

std::string readDocument(const std::string& file, terminal::ProgressLine& progress) {
  if (file == kStandardInput) {
    return readStandardInput(progress);
  }
  const std::u16string path = output::toUtf16(file);
  return install::update_metadata_parser::UpdateMetaDataJsonParser(path).readFile(path);
}

}  // namespace update_metadata_tool::input
