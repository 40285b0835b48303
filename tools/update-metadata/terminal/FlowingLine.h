#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace update_metadata_tool::terminal {

/// A line for people that wraps where it has no room.
///
/// It consists of words, which are the command's own, and of names from a document. Words wrap at
/// their blanks; names wrap anywhere and lose nothing. Both are UTF-8 that is safe for a terminal.
class FlowingLine {
 public:
  /// \param width   the columns of each line, at least 20
  /// \param indent  the indent of further lines, at most 10
  FlowingLine(std::size_t width, std::size_t indent) : width_(width), indent_(indent) {}

  /// Adds words. Blanks at the very beginning indent the line; blanks where it wraps are dropped.
  ///
  /// A number stays with the unit after it and with an exclamation mark before it if these fit into
  /// one line. A word that is too long for the indent is indented less, so that a number stays
  /// whole if a line has room for it.
  FlowingLine& words(std::string_view text);

  /// Adds a name. If it fits into one further line but not into the rest of this one, it begins on
  /// a new line; otherwise it begins here and wraps wherever a line is full. Marks stay with their
  /// characters.
  FlowingLine& name(std::string_view text);

  /// The lines, without a final line feed and without blanks at the end of the last words.
  const std::string& text() const { return text_; }

  friend std::ostream& operator<<(std::ostream& out, const FlowingLine& line) {
    return out << line.text_;
  }

 private:
  bool isBegun() const { return column_ != 0; }
  bool hasRoomFor(std::size_t columns) const;
  void breakLine();
  void append(std::string_view text);

  std::size_t width_;
  std::size_t indent_;
  std::string text_;
  std::size_t column_ = 0;  ///< of the last line
  std::size_t blanks_ = 0;  ///< before whatever is added next
};

}  // namespace update_metadata_tool::terminal
