#include "input/DocumentText.h"

#include <cstddef>
#include <ios>
#include <iostream>
#include <stdexcept>

#include "install/update_metadata_parser/Limits.h"
#include "output/Text.h"
#include "terminal/Console.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::input {
namespace {

constexpr std::size_t kBytesAtOnce = std::size_t{64} << 10U;

// Without this, users who name standard input but redirect nothing to it would wait for a command
// that is waiting for them.
void promptForTyping(terminal::ProgressLine& progress) {
  progress.clear();
  std::cerr << "update-metadata: reading the document from the terminal; end it with "
            << terminal::kEndOfInputKeys << '\n'
            << std::flush;
}

std::string readStandardInput(std::uint64_t limit, terminal::ProgressLine& progress) {
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
      if (got < kBytesAtOnce || text.size() > limit) {
        return text;
      }
      progress.update();
    }
  } catch (const std::ios_base::failure& failure) {
    throw std::ios_base::failure("standard input cannot be read", failure.code());
  }
}

}  // namespace

void checkLength(const std::string& text, std::uint64_t limit) {
  if (text.size() > limit) {
    throw std::runtime_error("Update MetaData Json file has more than " + std::to_string(limit) +
                             " bytes");
  }
}

std::string readDocument(const std::string& file, std::uint64_t limit,
                         terminal::ProgressLine& progress) {
  if (file == kStandardInput) {
    std::string text = readStandardInput(limit, progress);
    checkLength(text, limit);
    return text;
  }
  install::update_metadata_parser::Limits limits;
  limits.bytes = limit;
  const std::u16string path = output::toUtf16(file);
  return install::update_metadata_parser::LimitedParser(path, limits).readFile(path);
}

}  // namespace update_metadata_tool::input
