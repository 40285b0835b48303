#include "lint/MarkedLine.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "output/Text.h"
#include "terminal/DisplayWidth.h"

namespace update_metadata_tool::lint {
namespace {

constexpr std::string_view kLeftOut = "...";
constexpr const char* kTab = "    ";

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
  const output::Character character = output::firstCharacter(line.substr(begin));
  Cell cell{begin, begin + character.bytes, "", 0};
  if (character.code == U'\t') {
    cell.shown = kTab;
  } else {
    output::appendVisible(character, cell.shown);
  }
  const bool isAsItStands = cell.shown.size() == character.bytes && character.bytes != 1;
  cell.columns = isAsItStands ? terminal::displayWidth(character.code) : cell.shown.size();
  return cell;
}

// Whether each byte is a character of one column, and the first is not a blank.
bool isPlain(std::string_view bytes) {
  return bytes.front() != ' ' && std::all_of(bytes.begin(), bytes.end(),
                                             [](char byte) { return byte >= ' ' && byte <= '~'; });
}

// How many bytes before the place to show, at most: `columns` of ASCII, or four for each column,
// which the longest character takes.
std::size_t bytesBefore(std::string_view line, std::size_t offset, std::size_t columns) {
  if (offset > columns && isPlain(line.substr(offset - columns, columns))) {
    return columns;
  }
  return 4 * columns;
}

// The characters near the place, more than `columns` show.
std::vector<Cell> takeCells(std::string_view line, std::size_t offset, std::size_t columns) {
  const std::size_t before = bytesBefore(line, offset, columns);
  constexpr std::size_t kMostContinuations = 3;
  std::size_t position = offset > before ? offset - before : 0;
  if (position != 0) {
    // Do not start in the middle of a character if the bytes are UTF-8.
    const std::size_t most = position + kMostContinuations;
    while (position != most && output::continuesCharacter(line[position])) {
      ++position;
    }
  }
  std::vector<Cell> cells;
  cells.reserve(before + columns);
  const std::size_t end = std::min(line.size(), offset + 4 * columns);
  for (std::size_t used = 0; position < end && used <= columns;) {
    cells.push_back(makeCell(line, position));
    used += position < offset ? 0 : cells.back().columns;
    position = cells.back().end;
  }
  return cells;
}

using CellIterator = std::vector<Cell>::const_iterator;

// Steps over as many cells as fit in `columns`, at most to `last`; returns how many columns they
// take.
template <class Iterator>
std::size_t advanceOver(Iterator& cell, Iterator last, std::size_t columns) {
  std::size_t used = 0;
  for (; cell != last && used + cell->columns <= columns; ++cell) {
    used += cell->columns;
  }
  return used;
}

}  // namespace

MarkedLine markLine(std::string_view line, std::size_t offset, std::size_t length,
                    std::size_t columns) {
  const std::size_t shown = columns - 2 * kLeftOut.size();
  const std::size_t shownFromPlaceOn = shown / 2 + 3;  // a little more than what comes before
  if (!line.empty() && line.back() == '\r' && offset + 1 < line.size()) {
    line.remove_suffix(1);  // a carriage return before the line feed
  }
  const std::vector<Cell> cells = takeCells(line, offset, columns);
  const CellIterator place = std::find_if(cells.begin(), cells.end(),
                                          [offset](const Cell& cell) { return cell.end > offset; });
  const bool isFromTheBeginning = cells.empty() || cells.front().begin == 0;
  const CellIterator begin =
      isFromTheBeginning ? std::find_if_not(cells.begin(), place, isBlank) : cells.begin();
  // First the marked part, then what comes before it, then as much as fits.
  CellIterator last = place;
  std::size_t used = advanceOver(last, cells.end(), shownFromPlaceOn);
  auto reversedFirst = std::make_reverse_iterator(place);
  used += advanceOver(reversedFirst, std::make_reverse_iterator(begin), shown - used);
  const CellIterator first = reversedFirst.base();
  advanceOver(last, cells.end(), shown - used);

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

}  // namespace update_metadata_tool::lint
