#include "terminal/DisplayWidth.h"

#include <vector>

#include "diagnosis/CharacterRange.h"
#include "output/Text.h"
#include "terminal/WideCharacters.h"

namespace update_metadata_tool::terminal {
namespace {

using install::update_metadata_parser::diagnosis::isIn;
using output::firstCharacter;

constexpr install::update_metadata_parser::diagnosis::CharacterRange kWithoutWidth[] = {
    {0x0300, 0x036F},    // combining diacritical marks
    {0x0483, 0x0489},    // Cyrillic marks
    {0x0591, 0x05BD},    // Hebrew points and accents
    {0x0610, 0x061A},    // Arabic marks
    {0x064B, 0x065F},    // Arabic vowel signs
    {0x06D6, 0x06DC},    // Koranic marks
    {0x0900, 0x0902},    // Devanagari marks
    {0x093C, 0x093C},    // Devanagari nukta
    {0x0941, 0x0948},    // Devanagari vowel signs
    {0x094D, 0x094D},    // Devanagari virama
    {0x0E31, 0x0E31},    // Thai vowel sign
    {0x0E34, 0x0E3A},    // Thai vowel signs
    {0x0E47, 0x0E4E},    // Thai marks
    {0x1160, 0x11FF},    // Hangul vowels and finals, joined to the character before
    {0x1AB0, 0x1AFF},    // combining diacritical marks, extended
    {0x1DC0, 0x1DFF},    // combining diacritical marks, supplement
    {0x200B, 0x200F},    // zero width space, joiners, marks of direction
    {0x202A, 0x202E},    // embeddings and overrides of direction
    {0x2060, 0x206F},    // invisible operators, isolates
    {0x20D0, 0x20FF},    // combining marks for symbols
    {0x302A, 0x302D},    // ideographic tone marks
    {0x3099, 0x309A},    // kana voicing marks
    {0xFE00, 0xFE0F},    // variation selectors
    {0xFE20, 0xFE2F},    // combining half marks
    {0xFEFF, 0xFEFF},    // zero width no-break space
    {0xE0100, 0xE01EF},  // variation selectors, supplement
};

constexpr const char* kEllipsis = "\xE2\x80\xA6";  // U+2026, one column

}  // namespace

std::size_t displayWidth(char32_t character) {
  if (character < 0x300) {
    return 1;
  }
  if (isIn(kWithoutWidth, character)) {
    return 0;
  }
  return isIn(kWideCharacters, character) ? 2 : 1;
}

std::size_t displayWidth(std::string_view text) {
  std::size_t width = 0;
  while (!text.empty()) {
    const output::Character character = firstCharacter(text);
    width += displayWidth(character.code);
    text.remove_prefix(character.bytes);
  }
  return width;
}

std::vector<Cluster> clustersOf(std::string_view text) {
  std::vector<Cluster> clusters;
  while (!text.empty()) {
    const output::Character character = firstCharacter(text);
    const std::size_t width = displayWidth(character.code);
    if (width == 0 && !clusters.empty()) {
      std::string_view& before = clusters.back().text;
      before = {before.data(), before.size() + character.bytes};
    } else {
      clusters.push_back({text.substr(0, character.bytes), width});
    }
    text.remove_prefix(character.bytes);
  }
  return clusters;
}

std::string cutInTheMiddle(std::string_view text, std::size_t width) {
  if (displayWidth(text) <= width) {
    return std::string(text);
  }
  if (width == 0) {
    return {};
  }
  const std::vector<Cluster> clusters = clustersOf(text);
  const std::size_t left = width / 2;  // most columns before the ellipsis
  std::size_t used = 0;
  std::size_t front = 0;  // clusters before the ellipsis
  while (used + clusters[front].width <= left) {
    used += clusters[front++].width;
  }
  std::size_t back = clusters.size();  // first cluster after it
  while (used + clusters[back - 1].width <= width - 1) {
    used += clusters[--back].width;
  }
  const auto frontBytes = static_cast<std::size_t>(clusters[front].text.data() - text.data());
  const std::size_t backBegin =
      back == clusters.size() ? text.size()
                              : static_cast<std::size_t>(clusters[back].text.data() - text.data());
  return std::string(text.substr(0, frontBytes)).append(kEllipsis).append(text.substr(backBegin));
}

std::string padRight(std::string_view text, std::size_t width) {
  const std::size_t own = displayWidth(text);
  return std::string(text).append(own < width ? width - own : 0, ' ');
}

std::string padLeft(std::string_view text, std::size_t width) {
  const std::size_t own = displayWidth(text);
  return std::string(own < width ? width - own : 0, ' ').append(text);
}

}  // namespace update_metadata_tool::terminal
