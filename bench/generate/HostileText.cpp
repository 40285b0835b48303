#include "generate/HostileText.h"

#include <algorithm>
#include <cstdint>

#include "generate/Dice.h"

namespace bench::generate {
namespace {

std::string openBrackets(std::size_t levels) {
  return std::string(levels, '[');
}

std::string closedLevels(std::size_t levels) {
  return std::string(levels, '[') + std::string(levels, ']');
}

template <class KeyNumber>
std::string objectOf(std::size_t members, KeyNumber keyNumber) {
  constexpr std::size_t kDigits = 9;
  std::string text = "{";
  for (std::size_t i = 0; i < members; ++i) {
    const std::string digits = std::to_string(keyNumber(i));
    text.append(i == 0 ? "" : ",").append("\"key_");
    text.append(kDigits - std::min(kDigits, digits.size()), '0').append(digits);
    text.append("\":").append(std::to_string(i));
  }
  return text.append("}");
}

std::string descendingKeys(std::size_t members) {
  return objectOf(members, [=](std::size_t i) { return members - 1 - i; });
}

std::string equalKeys(std::size_t members) {
  return objectOf(members, [](std::size_t) { return std::size_t{1}; });
}

// One string of units from U+0080 on, one in 16 of them the first of a surrogate pair.
std::string escapes(std::size_t units) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text = "\"";
  const auto append = [&](std::uint64_t unit) {
    text.append("\\u");
    for (const unsigned shift : {12U, 8U, 4U, 0U}) {
      text.append(1, kDigits[(unit >> shift) & 0xFU]);
    }
  };
  Dice dice(1);
  for (std::size_t i = 0; i < units; ++i) {
    if (dice.below(16) == 0 && i + 1 < units) {
      append(0xD800 + dice.below(0x400));
      append(0xDC00 + dice.below(0x400));
      ++i;
    } else {
      append(0x80 + dice.below(0xD800 - 0x80));
    }
  }
  return text.append("\"");
}

}  // namespace

const std::vector<HostileText>& hostileTexts() {
  static const std::vector<HostileText> texts = {
      {"open-brackets", "brackets that are never closed", "level", 16'000'000, openBrackets},
      {"closed-levels", "arrays in arrays", "level", 8'000'000, closedLevels},
      {"descending-keys", "keys in descending order", "member", 1'000'000, descendingKeys},
      {"equal-keys", "the same key over and over", "member", 1'000'000, equalKeys},
      {"escapes", "a string of escapes alone", "escape", 8'333'333, escapes},
  };
  return texts;
}

const HostileText* findHostileText(std::string_view name) {
  const std::vector<HostileText>& texts = hostileTexts();
  const auto found = std::find_if(texts.begin(), texts.end(),
                                  [&](const HostileText& text) { return text.name == name; });
  return found == texts.end() ? nullptr : &*found;
}

}  // namespace bench::generate
