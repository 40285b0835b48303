#include "terminal/FlowingLine.h"

#include <algorithm>

#include "terminal/DisplayWidth.h"

namespace update_metadata_tool::terminal {
namespace {

std::string_view firstWord(std::string_view text) {
  return text.substr(0, text.find(' '));
}

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

// Whether a line should not end with this word.
bool belongsToTheNext(std::string_view word) {
  return isDigit(word.back()) || word == "!";
}

// The first words, up to the first blank at which a line may break.
//
// \pre `text` begins with a word
std::string_view firstUnit(std::string_view text) {
  std::size_t end = firstWord(text).size();
  std::size_t begin = 0;  // of the last word
  while (belongsToTheNext(text.substr(begin, end - begin))) {
    begin = text.find_first_not_of(' ', end);
    if (begin == std::string_view::npos) {
      break;
    }
    end = begin + firstWord(text.substr(begin)).size();
  }
  return text.substr(0, end);
}

// "<" of "<-1"; the whole of a word that begins with a number or contains none.
std::string_view partBeforeNumber(std::string_view word) {
  const std::size_t number = word.find_first_of("-0123456789");
  return number == 0 ? word : word.substr(0, number);
}

}  // namespace

FlowingLine& FlowingLine::words(std::string_view text) {
  while (!text.empty()) {
    const std::size_t blanks = std::min(text.find_first_not_of(' '), text.size());
    blanks_ += blanks;
    text.remove_prefix(blanks);
    if (text.empty()) {
      break;
    }
    std::string_view next = firstUnit(text);
    if (displayWidth(next) > width_ - indent_) {
      next = firstWord(text);
    }
    if (displayWidth(next) > width_) {
      next = partBeforeNumber(next);
    }
    text.remove_prefix(next.size());
    const std::size_t columns = displayWidth(next);
    if (isBegun() && !hasRoomFor(columns)) {
      breakLine();
    }
    if (!isBegun()) {
      blanks_ = std::min(blanks_, width_ - std::min(columns, width_));
    }
    append(next);
  }
  return *this;
}

FlowingLine& FlowingLine::name(std::string_view text) {
  constexpr std::size_t kWidestCharacter = 2;
  const std::size_t columns = displayWidth(text);
  const bool fitsElsewhere = columns <= width_ - indent_;
  if (isBegun() && !hasRoomFor(fitsElsewhere ? columns : kWidestCharacter)) {
    breakLine();
  }
  append(text);
  return *this;
}

bool FlowingLine::hasRoomFor(std::size_t columns) const {
  return column_ + blanks_ + columns <= width_;
}

void FlowingLine::breakLine() {
  text_ += '\n';
  column_ = 0;
  blanks_ = indent_;
}

void FlowingLine::append(std::string_view text) {
  for (const Cluster& cluster : clustersOf(text)) {
    if (!hasRoomFor(cluster.width)) {
      breakLine();
    }
    text_.append(blanks_, ' ').append(cluster.text);
    column_ += blanks_ + cluster.width;
    blanks_ = 0;
  }
}

}  // namespace update_metadata_tool::terminal
