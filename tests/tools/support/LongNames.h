#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>

#include "support/PlainDocument.h"
#include "terminal/DisplayWidth.h"

namespace test_support {

/// Names that are longer than a line: many words, one word, blanks, wide characters.
inline const std::string kLongWords =
    "The Rather Long Name of a Product That Does Everything for Everybody, in Every Language, with "
    "All the Trimmings That Anybody Has Ever Asked For";
inline const std::string kLongWord(150, 'x');
inline const std::string kLongBlanks = std::string(150, ' ') + 'x' + std::string(150, ' ') + 'x';
inline const std::string kLongWideName = [] {
  std::string name;
  for (int i = 0; i < 75; ++i) {
    name += "\xE4\xB8\x80";  // two columns
  }
  return name;
}();

/// A document in which all names are long, with numbers of many digits and products that share
/// packages.
///
/// \param size  of one package
inline PlainDocument makeDocumentWithLongNames(std::int64_t size) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kTruncated = std::numeric_limits<std::int64_t>::min();
  PlainDocument document;
  document.components[kLongWord] = {{{kLongWord, {size, 0}}}, {{kLongWords, {kMost, size}}}};
  document.components[kLongWideName] = {{{"a", {-1, 0}}},
                                        {{kLongWideName, {kTruncated, kTruncated}}}};
  document.products[kLongWords] = {{kLongWord}, {kLongWord, kLongWideName}};
  document.products[kLongWideName] = {{kLongWideName}, {kLongWord}};
  document.componentsWithFiles[kLongWord][kLongWord] = {
      size, {kLongWord + '/' + kLongWord, kLongWords, kLongBlanks, std::to_string(size)}};
  return document;
}

/// The number of columns of the widest line.
inline std::size_t widestLine(const std::string& text) {
  std::istringstream lines(text);
  std::size_t widest = 0;
  for (std::string line; std::getline(lines, line);) {
    widest = std::max(widest, update_metadata_tool::terminal::displayWidth(line));
  }
  return widest;
}

}  // namespace test_support
