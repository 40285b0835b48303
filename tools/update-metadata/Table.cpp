#include "Table.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "DisplayWidth.h"
#include "FlowingLine.h"

namespace update_metadata_tool {
namespace {

constexpr const char* kGap = "  ";
constexpr std::size_t kGapWidth = 2;

// Names that would have to be cut to less get lines of their own.
constexpr std::size_t kNarrowestNames = 16;

// The column of names gets no wider.
constexpr std::size_t kWidestNames = 100;

bool hasBelow(const std::vector<Cell>& row) {
  return std::any_of(row.begin(), row.end(), [](const Cell& cell) { return !cell.below.empty(); });
}

// One line of a row in columns; blanks at its end are left out.
template <class TextOf>
void writeLine(const std::vector<std::size_t>& widths, std::size_t roomOfNames, TextOf textOf,
               std::ostream& out) {
  std::string line = padRight(cutInTheMiddle(textOf(0), roomOfNames), widths[0]);
  for (std::size_t column = 1; column < widths.size(); ++column) {
    line.append(kGap).append(padLeft(textOf(column), widths[column]));
  }
  line.erase(line.find_last_not_of(' ') + 1);
  out << line << '\n';
}

}  // namespace

Table::Table(std::vector<std::string> headings) : headings_(std::move(headings)) {}

void Table::addRow(std::vector<Cell> cells) {
  rows_.push_back(std::move(cells));
}

std::vector<std::size_t> Table::widthsOfColumns() const {
  std::vector<std::size_t> widths;
  for (std::size_t column = 0; column < headings_.size(); ++column) {
    std::size_t widest = displayWidth(headings_[column]);
    for (const std::vector<Cell>& row : rows_) {
      widest = std::max({widest, displayWidth(row[column].text), displayWidth(row[column].below)});
    }
    widths.push_back(widest);
  }
  return widths;
}

void Table::write(std::size_t width, std::ostream& out) const {
  if (rows_.empty()) {
    return;
  }
  std::vector<std::size_t> widths = widthsOfColumns();
  std::size_t numbers = 0;
  for (std::size_t column = 1; column < widths.size(); ++column) {
    numbers += kGapWidth + widths[column];
  }
  if (numbers + std::min(widths[0], kNarrowestNames) > width) {
    writeOneBelowTheOther(width, out);
    return;
  }
  const std::size_t roomOfNames = width - numbers;
  widths[0] = std::min({widths[0], roomOfNames, kWidestNames});
  writeInColumns(widths, roomOfNames, out);
}

void Table::writeInColumns(const std::vector<std::size_t>& widths, std::size_t roomOfNames,
                           std::ostream& out) const {
  const auto write = [&](auto textOf) { writeLine(widths, roomOfNames, textOf, out); };
  write([this](std::size_t column) -> const std::string& { return headings_[column]; });
  for (const std::vector<Cell>& row : rows_) {
    write([&row](std::size_t column) -> const std::string& { return row[column].text; });
    if (hasBelow(row)) {
      write([&row](std::size_t column) -> const std::string& { return row[column].below; });
    }
  }
}

void Table::writeOneBelowTheOther(std::size_t width, std::ostream& out) const {
  std::size_t headings = 0;
  std::size_t texts = 0;
  std::size_t belows = 0;
  for (std::size_t column = 1; column < headings_.size(); ++column) {
    headings = std::max(headings, displayWidth(headings_[column]));
    for (const std::vector<Cell>& row : rows_) {
      texts = std::max(texts, displayWidth(row[column].text));
      belows = std::max(belows, displayWidth(row[column].below));
    }
  }
  out << headings_[0] << '\n';
  for (const std::vector<Cell>& row : rows_) {
    const std::size_t room = width - kGapWidth;
    out << kGap << cutInTheMiddle(row[0].text, room) << '\n';
    if (!row[0].below.empty()) {
      out << kGap << cutInTheMiddle(row[0].below, room) << '\n';
    }
    for (std::size_t column = 1; column < headings_.size(); ++column) {
      const Cell& cell = row[column];
      if (cell.text.empty() && cell.below.empty()) {
        continue;
      }
      std::string line(2 * kGapWidth, ' ');
      line.append(padRight(headings_[column], headings)).append(kGap);
      line.append(padLeft(cell.text, texts));
      if (!cell.below.empty()) {
        line.append(kGap).append(padLeft(cell.below, belows));
      }
      out << FlowingLine(width, 3 * kGapWidth).words(line) << '\n';
    }
  }
}

}  // namespace update_metadata_tool
