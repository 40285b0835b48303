#include "lint/MarkedLine.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "Text.h"

namespace update_metadata_tool {
namespace {

constexpr std::size_t kColumns = 74;  // with "..." on both sides, 80
constexpr std::size_t kColumnsFromPlaceOn = 40;
constexpr std::size_t kBytesAround = 4 * kColumns;  // four bytes make the longest character
constexpr const char* kLeftOut = "...";
constexpr const char* kTab = "    ";

struct Range {
  char32_t first;
  char32_t last;
};

// Characters that stand above or below the one before them, or are not seen at all.
constexpr Range kWithoutWidth[] = {
    {0x0300, 0x036F},  // combining marks
    {0x200B, 0x200D},  // zero width space, non-joiner and joiner
    {0x20D0, 0x20FF},  // combining marks for symbols
    {0xFE00, 0xFE0F},  // variation selectors
    {0xFE20, 0xFE2F},  // combining half marks
};

// Characters of East Asian scripts, and pictures, which take two columns.
constexpr Range kTwiceAsWide[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
    {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

template <std::size_t kSize>
bool isIn(const Range (&ranges)[kSize], char32_t character) {
  return std::any_of(std::begin(ranges), std::end(ranges), [character](const Range& range) {
    return character >= range.first && character <= range.last;
  });
}

// One character of the line, as it is shown.
struct Cell {
  std::size_t begin;  ///< offset in the line
  std::size_t end;
  std::string shown;
  std::size_t columns;
};

bool isBlank(const Cell& cell) {
  return cell.shown.find_first_not_of(' ') == std::string::npos;
}

Cell makeCell(std::string_view line, std::size_t begin) {
  const Character character = firstCharacter(line.substr(begin));
  Cell cell{begin, begin + character.bytes, "", 0};
  if (character.code == U'\t') {
    cell.shown = kTab;
  } else {
    appendVisible(character, cell.shown);
  }
  const bool isAsItStands = cell.shown.size() == character.bytes && character.bytes != 1;
  if (isAsItStands && isIn(kWithoutWidth, character.code)) {
    cell.columns = 0;
  } else if (isAsItStands) {
    cell.columns = isIn(kTwiceAsWide, character.code) ? 2 : 1;
  } else {
    cell.columns = cell.shown.size();
  }
  return cell;
}

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The characters near the place, more than are ever shown.
std::vector<Cell> takeCells(std::string_view line, std::size_t offset) {
  constexpr std::size_t kMostContinuations = 3;
  std::size_t position = offset > kBytesAround ? offset - kBytesAround : 0;
  if (position != 0) {
    // Not into the middle of a character, if these bytes make characters at all.
    const std::size_t most = position + kMostContinuations;
    while (position != most && isContinuation(line[position])) {
      ++position;
    }
  }
  std::vector<Cell> cells;
  const std::size_t end = std::min(line.size(), offset + kBytesAround);
  while (position < end) {
    cells.push_back(makeCell(line, position));
    position = cells.back().end;
  }
  return cells;
}

using CellIterator = std::vector<Cell>::const_iterator;

// Steps over as many cells as `columns` have room for, at most to `last`; tells how many columns
// they take.
template <class Iterator>
std::size_t advanceOver(Iterator& cell, Iterator last, std::size_t columns) {
  std::size_t used = 0;
  for (; cell != last && used + cell->columns <= columns; ++cell) {
    used += cell->columns;
  }
  return used;
}

}  // namespace

MarkedLine markLine(std::string_view line, std::size_t offset, std::size_t length) {
  if (!line.empty() && line.back() == '\r' && offset + 1 < line.size()) {
    line.remove_suffix(1);  // the half of a line's end that some systems write
  }
  const std::vector<Cell> cells = takeCells(line, offset);
  const CellIterator place = std::find_if(cells.begin(), cells.end(),
                                          [offset](const Cell& cell) { return cell.end > offset; });
  const bool isFromTheBeginning = cells.empty() || cells.front().begin == 0;
  const CellIterator begin =
      isFromTheBeginning ? std::find_if_not(cells.begin(), place, isBlank) : cells.begin();
  // First what is marked, then what comes before it, then what there is room for.
  CellIterator last = place;
  std::size_t columns = advanceOver(last, cells.end(), kColumnsFromPlaceOn);
  auto reversedFirst = std::make_reverse_iterator(place);
  columns += advanceOver(reversedFirst, std::make_reverse_iterator(begin), kColumns - columns);
  const CellIterator first = reversedFirst.base();
  advanceOver(last, cells.end(), kColumns - columns);

  MarkedLine marked;
  if (first != begin || !isFromTheBeginning) {
    marked.line = kLeftOut;
  }
  marked.marks.append(marked.line.size(), ' ');
  for (CellIterator cell = first; cell != last; ++cell) {
    marked.line += cell->shown;
    if (cell < place) {
      marked.marks.append(cell->columns, ' ');
    } else if (cell == place || cell->begin < offset + length) {
      marked.marks.append(cell->columns, '~');
    }
  }
  if (last != cells.end() || (!cells.empty() && cells.back().end < line.size())) {
    marked.line += kLeftOut;
  }
  const std::size_t caret = marked.marks.find('~');
  if (caret == std::string::npos) {
    marked.marks += '^';
  } else {
    marked.marks[caret] = '^';
  }
  return marked;
}

}  // namespace update_metadata_tool
