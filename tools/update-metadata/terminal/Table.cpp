#include "terminal/Table.h"

#include <algorithm>
#include <ostream>
#include <string_view>
#include <utility>

#include "terminal/DisplayWidth.h"
#include "terminal/FlowingLine.h"

namespace update_metadata_tool::terminal {
namespace {

constexpr const char* kGap = "  ";
constexpr std::size_t kGapWidth = 2;

// Names that would have less room get separate lines.
constexpr std::size_t kNarrowestNames = 16;

// The largest width of the column of names.
constexpr std::size_t kWidestNames = 100;

bool isEmpty(const Label& label) {
  return label.name.empty() && label.words.empty();
}

// The columns of a label whose name is cut to at most `mostOfName` columns.
std::size_t widthOf(const Label& label, std::size_t mostOfName) {
  return std::min(displayWidth(label.name), mostOfName) + displayWidth(label.words);
}

// The same for the two lines of a row's name.
std::size_t widthOf(const RowName& name, std::size_t mostOfName) {
  const std::size_t below = isEmpty(name.below) ? 0 : kGapWidth + widthOf(name.below, mostOfName);
  return std::max(widthOf(name.text, mostOfName), below);
}

// \pre there is room for the words
std::string cut(const Label& label, std::size_t room) {
  return cutInTheMiddle(label.name, room - displayWidth(label.words)) + label.words;
}

}  // namespace

Table::Table(std::string heading, std::vector<std::string> numberHeadings, LongNames longNames)
    : heading_(std::move(heading)),
      numberHeadings_(std::move(numberHeadings)),
      longNames_(longNames) {}

void Table::addRow(RowName name, std::vector<Cell> numbers) {
  rows_.push_back({std::move(name), std::move(numbers)});
}

std::vector<std::size_t> Table::widthsOfNumbers() const {
  std::vector<std::size_t> widths;
  for (std::size_t column = 0; column < numberHeadings_.size(); ++column) {
    std::size_t widest = displayWidth(numberHeadings_[column]);
    for (const Row& row : rows_) {
      const Cell& cell = row.numbers[column];
      widest = std::max({widest, displayWidth(cell.text), displayWidth(cell.below)});
    }
    widths.push_back(widest);
  }
  return widths;
}

void Table::write(std::size_t width, std::ostream& out) const {
  if (rows_.empty()) {
    writeAsList(width, out);
    return;
  }
  const std::vector<std::size_t> widths = widthsOfNumbers();
  std::size_t numbers = 0;
  for (const std::size_t column : widths) {
    numbers += kGapWidth + column;
  }
  std::size_t narrowest = displayWidth(heading_);
  std::size_t widest = narrowest;
  for (const Row& row : rows_) {
    narrowest = std::max(narrowest, widthOf(row.name, kNarrowestNames));
    widest = std::max(widest, widthOf(row.name, width));
  }
  if (numbers + narrowest > width) {
    writeAsList(width, out);
    return;
  }
  const std::size_t room = width - numbers;
  writeInColumns(width, room, std::min({widest, room, kWidestNames}), widths, out);
}

// A label on separate lines. A name that is cut leaves room for the word attached to it.
void Table::writeLabel(const Label& label, std::size_t indent, std::size_t width,
                       std::ostream& out) const {
  const std::string_view words = label.words;
  const std::size_t attached = displayWidth(words.substr(0, words.find(' ')));
  FlowingLine line(width, indent + 2 * kGapWidth);
  line.words(std::string(indent, ' '));
  line.name(longNames_ == LongNames::kWrap ? label.name
                                           : cutInTheMiddle(label.name, width - indent - attached));
  out << line.words(words) << '\n';
}

void Table::writeInColumns(std::size_t width, std::size_t roomOfNames, std::size_t widthOfNames,
                           const std::vector<std::size_t>& widths, std::ostream& out) const {
  const auto writeLine = [&](const std::string& name, auto numberOf) {
    std::string line = padRight(name, widthOfNames);
    for (std::size_t column = 0; column < widths.size(); ++column) {
      line.append(kGap).append(padLeft(numberOf(column), widths[column]));
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  };
  writeLine(heading_, [&](std::size_t column) { return numberHeadings_[column]; });
  for (const Row& row : rows_) {
    const bool isWrapped =
        longNames_ == LongNames::kWrap && widthOf(row.name.text, width) > roomOfNames;
    if (isWrapped) {
      writeLabel(row.name.text, 0, width, out);
    }
    writeLine(isWrapped ? "" : cut(row.name.text, roomOfNames),
              [&](std::size_t column) { return row.numbers[column].text; });
    const bool hasNumbersBelow =
        std::any_of(row.numbers.begin(), row.numbers.end(),
                    [](const Cell& number) { return !number.below.empty(); });
    if (hasNumbersBelow || !isEmpty(row.name.below)) {
      writeLine(kGap + cut(row.name.below, roomOfNames - kGapWidth),
                [&](std::size_t column) { return row.numbers[column].below; });
    }
  }
}

void Table::writeAsList(std::size_t width, std::ostream& out) const {
  std::size_t headings = 0;
  std::size_t texts = 0;
  std::size_t belows = 0;
  for (std::size_t column = 0; column < numberHeadings_.size(); ++column) {
    headings = std::max(headings, displayWidth(numberHeadings_[column]));
    for (const Row& row : rows_) {
      texts = std::max(texts, displayWidth(row.numbers[column].text));
      belows = std::max(belows, displayWidth(row.numbers[column].below));
    }
  }
  out << FlowingLine(width, kGapWidth).words(heading_) << '\n';
  for (const Row& row : rows_) {
    writeLabel(row.name.text, kGapWidth, width, out);
    if (!isEmpty(row.name.below)) {
      writeLabel(row.name.below, 2 * kGapWidth, width, out);
    }
    for (std::size_t column = 0; column < numberHeadings_.size(); ++column) {
      const Cell& cell = row.numbers[column];
      if (cell.text.empty() && cell.below.empty()) {
        continue;
      }
      std::string line(2 * kGapWidth, ' ');
      line.append(padRight(numberHeadings_[column], headings)).append(kGap);
      line.append(padLeft(cell.text, texts));
      if (!cell.below.empty()) {
        line.append(kGap).append(padLeft(cell.below, belows));
      }
      out << FlowingLine(width, 3 * kGapWidth).words(line) << '\n';
    }
  }
}

}  // namespace update_metadata_tool::terminal
