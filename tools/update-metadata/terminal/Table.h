#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace update_metadata_tool::terminal {

/// A name, which is cut in the middle where there is no room for it, and words behind it, which
/// never are. Both are UTF-8 that may go to a terminal; either may be empty.
struct Label {
  std::string name;
  std::string words = {};
};

/// What a row is about and, indented on a line of its own, what belongs below it.
struct RowName {
  Label text;
  Label below = {};
};

/// A number in a row and, on a line of its own, what belongs below it; either may be empty.
struct Cell {
  std::string text;
  std::string below = {};
};

/// A table for people, which keeps to the width of a terminal.
///
/// The first column says what the rows are about, aligned to the left; the others hold numbers,
/// aligned to the right. Names are cut where there is no room for them; numbers, headings and other
/// words never are. If that would leave next to nothing of the names, the rows are written one
/// below the other instead, indented below the heading of the names: the name, then each number
/// behind its own heading.
///
/// However much room there is, one very long name does not draw the numbers of all others away from
/// their names: its own follow it, out of their columns.
class Table {
 public:
  /// \param heading         of what the rows are about
  /// \param numberHeadings  of each column of numbers
  Table(std::string heading, std::vector<std::string> numberHeadings);

  /// \pre there are as many numbers as headings of theirs
  void addRow(RowName name, std::vector<Cell> numbers);

  /// Writes all rows in lines of at most `width` columns, from 20 on, with the headings above them;
  /// nothing at all without rows.
  void write(std::size_t width, std::ostream& out) const;

 private:
  struct Row {
    RowName name;
    std::vector<Cell> numbers;
  };

  std::vector<std::size_t> widthsOfNumbers() const;
  void writeInColumns(std::size_t roomOfNames, std::size_t widthOfNames,
                      const std::vector<std::size_t>& widths, std::ostream& out) const;
  void writeOneBelowTheOther(std::size_t width, std::ostream& out) const;

  std::string heading_;
  std::vector<std::string> numberHeadings_;
  std::vector<Row> rows_;
};

}  // namespace update_metadata_tool::terminal
