#include "lint/CharacterIndex.h"

#include <algorithm>

#include "output/Text.h"

namespace update_metadata_tool::lint {
namespace {

constexpr std::size_t kBlock = 1024;  // the most bytes that are counted for an answer

std::size_t countIn(std::string_view text) {
  const auto continuing = std::count_if(text.begin(), text.end(), output::continuesCharacter);
  return text.size() - static_cast<std::size_t>(continuing);
}

}  // namespace

CharacterIndex::CharacterIndex(std::string_view text) : text_(text) {
  std::size_t count = 0;
  for (std::size_t begin = 0; begin <= text.size(); begin += kBlock) {
    countsBeforeBlocks_.push_back(count);
    count += countIn(text.substr(begin, kBlock));
  }
}

std::size_t CharacterIndex::countBefore(std::size_t offset) const {
  const std::size_t block = offset / kBlock;
  const std::size_t begin = block * kBlock;
  return countsBeforeBlocks_[block] + countIn(text_.substr(begin, offset - begin));
}

}  // namespace update_metadata_tool::lint
