#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace update_metadata_tool::terminal {

/// A name, and words after it, which are never cut. Both are UTF-8 that is safe for a terminal;
/// either may be empty.
struct Label {
  std::string name;
  std::string words = {};
};

/// The name of a row and, indented on the next line, what belongs to it.
struct RowName {
  Label text;
  Label below = {};
};

/// A number in a row and another one on the next line; either may be empty.
struct Cell {
  std::string text;
  std::string below = {};
};

/// What happens to names that have no room in their column.
enum class LongNames {
  kCut,   ///< their middle is replaced with an ellipsis
  kWrap,  ///< they get separate lines, with the numbers below
};

/// A table for people that fits the terminal.
///
/// The first column contains the names of the rows, aligned to the left; the others contain
/// numbers, aligned to the right. Numbers, headings and words are never cut. If hardly any room
/// would be left for names, each row is written as a list instead, indented below the heading: the
/// name, then each number after its heading.
///
/// Even without a limit of the width, one very long name does not move the column of numbers away
/// from the other names: its own numbers follow it directly.
class Table {
 public:
  /// \param heading         of the names
  /// \param numberHeadings  of each column of numbers
  Table(std::string heading, std::vector<std::string> numberHeadings,
        LongNames longNames = LongNames::kCut);

  /// \pre there is one number for each heading
  void addRow(RowName name, std::vector<Cell> numbers);

  /// Writes the headings and all rows in lines of at most `width` columns, at least 20. Without
  /// rows, writes the heading of the names alone.
  void write(std::size_t width, std::ostream& out) const;

 private:
  struct Row {
    RowName name;
    std::vector<Cell> numbers;
  };

  std::vector<std::size_t> widthsOfNumbers() const;
  void writeLabel(const Label& label, std::size_t indent, std::size_t width,
                  std::ostream& out) const;
  void writeInColumns(std::size_t width, std::size_t roomOfNames, std::size_t widthOfNames,
                      const std::vector<std::size_t>& widths, std::ostream& out) const;
  void writeAsList(std::size_t width, std::ostream& out) const;

  std::string heading_;
  std::vector<std::string> numberHeadings_;
  LongNames longNames_;
  std::vector<Row> rows_;
};

}  // namespace update_metadata_tool::terminal
