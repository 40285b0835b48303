#include "generate/Names.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "fl/i18n.h"

namespace bench::generate {
namespace {

using Word = std::string_view;

constexpr std::array<Word, 20> kAreas = {"core",    "render",  "network",  "storage",  "report",
                                         "editor",  "desktop", "print",    "mail",     "search",
                                         "account", "archive", "canvas",   "calendar", "chart",
                                         "cloud",   "layout",  "database", "media",    "license"};
constexpr std::array<Word, 16> kRoles = {
    "runtime",   "engine",  "common",  "library",   "support", "examples", "interface", "service",
    "resources", "adapter", "catalog", "templates", "tools",   "builder",  "viewer",    "bindings"};
constexpr std::array<Word, 10> kKinds = {"bin",  "lib",     "data",    "doc",   "res",
                                         "java", "include", "scripts", "fonts", "models"};
constexpr std::array<Word, 5> kPlatforms = {"win64", "linux64", "mac64", "arm64", "common"};
constexpr std::array<Word, 8> kVariants = {"common",  "core", "extra", "debug",
                                           "symbols", "i18n", "large", "sample"};
constexpr std::array<Word, 16> kFolders = {
    "plugins",       "shared",  "resources",  "internal",     "examples",  "support",
    "packages",      "modules", "locale",     "images",       "templates", "scripts",
    "documentation", "include", "thirdparty", "configuration"};
constexpr std::array<Word, 12> kStems = {"overview", "settings", "dialog",  "renderer",
                                         "message",  "catalog",  "toolbar", "transform",
                                         "account",  "navigate", "adapter", "estimate"};
constexpr std::array<Word, 10> kSuffixes = {".html", ".xml",  ".dll",   ".so",         ".jar",
                                            ".png",  ".json", ".class", ".properties", ".dat"};
constexpr std::array<Word, 10> kWideWords = {
    "\u00fcbersicht",
    "r\u00e9sum\u00e9",
    "se\u00f1ales",
    "gr\u00f6\u00dfe",
    "\u8a2d\u5b9a",
    "\u6982\u8981",
    "\u043f\u043e\u043c\u043e\u0449\u044c",
    "na\u00efve",
    "fa\u00e7ade",
    "\u56f3\U0001f680\u7248",
};
constexpr std::array<Word, 4> kWideNames = {"\u8a2d\u5b9a", "\u6982\u8981",
                                            "\u043f\u043e\u043c\u043e\u0449\u044c",
                                            "\u56f3\U0001f680\u7248"};

std::string joined(std::initializer_list<Word> words, char separator) {
  std::string text;
  for (const Word word : words) {
    text.append(text.empty() ? 0 : 1, separator).append(word);
  }
  return text;
}

std::string padded(std::size_t number, std::size_t width) {
  std::string digits = std::to_string(number);
  digits.insert(0, std::max(width, digits.size()) - digits.size(), '0');
  return digits;
}

std::size_t widthOf(std::size_t count) {
  return std::max<std::size_t>(3, std::to_string(count == 0 ? 0 : count - 1).size());
}

// a to z, then aa to az, ba and so on.
std::string letters(std::size_t number) {
  constexpr std::size_t kLetters = 26;
  std::string text;
  for (++number; number != 0; number = (number - 1) / kLetters) {
    text.insert(text.begin(), static_cast<char>('a' + static_cast<char>((number - 1) % kLetters)));
  }
  return text;
}

// The text with each UTF-16 unit beyond ASCII written as an escape.
std::string escaped(Word text) {
  constexpr Word kDigits = "0123456789abcdef";
  std::string result;
  for (const char16_t unit : fl::i18n::to_ustring(text)) {
    if (unit < 0x80) {
      result.append(1, static_cast<char>(unit));
      continue;
    }
    result.append("\\u");
    for (const unsigned shift : {12U, 8U, 4U, 0U}) {
      result.append(1, kDigits[(unsigned{unit} >> shift) & 0xFU]);
    }
  }
  return result;
}

}  // namespace

std::vector<std::string> componentNames(NameStyle style, std::size_t count) {
  // Fixed-width numbers: no name is a prefix of another, so no two keys are equal.
  const std::size_t width = widthOf(count);
  std::vector<std::string> names;
  names.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    switch (style) {
      case NameStyle::words:
        names.push_back(joined({kAreas[i % kAreas.size()],
                                kRoles[i / kAreas.size() % kRoles.size()], padded(i, width)},
                               '_'));
        break;
      case NameStyle::letters:
        names.push_back(letters(i));
        break;
      case NameStyle::wide:
        names.push_back(joined({kWideNames[i % kWideNames.size()], padded(i, width)}, '_'));
        break;
    }
  }
  return names;
}

void continueNames(std::vector<std::string>& names, std::size_t oneIn, std::size_t chain) {
  for (std::size_t end = oneIn; end <= names.size(); end += oneIn) {
    for (std::size_t i = end - chain + 1; i < end; ++i) {
      names[i] = names[i - 1] + "_docs";
    }
  }
}

std::vector<std::string> packageNames(NameStyle style, std::size_t count) {
  std::vector<std::string> names;
  names.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (style == NameStyle::letters) {
      names.push_back(letters(i));
      continue;
    }
    std::size_t rest = i;
    const auto next = [&rest](std::size_t size) {
      const std::size_t digit = rest % size;
      rest /= size;
      return digit;
    };
    if (style == NameStyle::wide) {
      const std::size_t word = next(kWideNames.size());
      names.push_back(joined({kWideNames[word], padded(rest, 3)}, '_'));
      continue;
    }
    const Word platform = kPlatforms[next(kPlatforms.size())];
    const Word kind = kKinds[next(kKinds.size())];
    const Word variant = kVariants[next(kVariants.size())];
    names.push_back(joined({kind, platform, variant}, '_'));
    if (rest != 0) {
      names.back().append(1, '_').append(std::to_string(rest));
    }
  }
  return names;
}

std::string productName(NameStyle style, std::size_t number) {
  switch (style) {
    case NameStyle::letters:
      return letters(number);
    case NameStyle::wide:
      return joined({kWideNames[number % kWideNames.size()], padded(number, 3)}, ' ');
    case NameStyle::words:
      break;
  }
  return joined({kAreas[number % kAreas.size()], kRoles[number % kRoles.size()], "product",
                 padded(number, 3)},
                ' ');
}

std::string filePath(Dice& dice, std::size_t serial, std::size_t bytes) {
  // How many bytes of a path a name takes: stem, number and suffix.
  constexpr std::size_t kNameBytes = 30;
  constexpr std::size_t kSerialDigits = 7;
  const std::uint64_t kind = dice.below(64);
  const bool isEscaped = kind == 0;
  const bool hasBackslashes = kind == 5;
  const std::size_t target =
      bytes - bytes / 4 + static_cast<std::size_t>(dice.below(bytes / 2 + 1));
  const Word separator = hasBackslashes ? "\\\\" : "/";
  std::string path;
  do {
    path.append(dice.pick(kFolders)).append(separator);
  } while (path.size() + kNameBytes < target);
  const Word stem = kind < 5 ? dice.pick(kWideWords) : dice.pick(kStems);
  path.append(isEscaped ? escaped(stem) : std::string(stem));
  path.append(1, '_').append(padded(serial, kSerialDigits)).append(dice.pick(kSuffixes));
  return path;
}

}  // namespace bench::generate
