#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace update_metadata_tool {

/// What stands in one column of one row: a text and, on a line of its own, what belongs below it.
/// Both are UTF-8 that may go to a terminal; either may be empty.
struct Cell {
  std::string text;
  std::string below = {};
};

/// A table for people, which keeps to the width of a terminal.
///
/// The first column holds names, aligned to the left; the others hold numbers, aligned to the
/// right. Names are cut in the middle where there is no room for them, numbers never. If that would
/// leave next to nothing of the names, the rows are written one below the other instead, indented
/// below the heading of the names: the name, then each number behind its own heading.
///
/// However much room there is, one very long name does not draw the numbers of all others away from
/// their names: its own follow it, out of their columns.
class Table {
 public:
  explicit Table(std::vector<std::string> headings);

  /// \pre there are as many cells as headings
  void addRow(std::vector<Cell> cells);

  /// Writes all rows in lines of at most `width` columns, from 20 on, with the headings above them;
  /// nothing at all without rows.
  void write(std::size_t width, std::ostream& out) const;

 private:
  std::vector<std::size_t> widthsOfColumns() const;
  void writeInColumns(const std::vector<std::size_t>& widths, std::size_t roomOfNames,
                      std::ostream& out) const;
  void writeOneBelowTheOther(std::size_t width, std::ostream& out) const;

  std::vector<std::string> headings_;
  std::vector<std::vector<Cell>> rows_;
};

}  // namespace update_metadata_tool
