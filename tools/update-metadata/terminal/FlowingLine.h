#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace update_metadata_tool::terminal {

/// A line for people that goes on in further lines where it has no room.
///
/// It is put together of words, which the command says, and of names, which a document brings:
/// words break at their blanks, names break anywhere, and nothing of a name is lost. Both are UTF-8
/// that may go to a terminal.
class FlowingLine {
 public:
  /// \param width   the columns of each line, from 20 on
  /// \param indent  blanks in front of further lines, at most 10
  FlowingLine(std::size_t width, std::size_t indent) : width_(width), indent_(indent) {}

  /// Adds words. Blanks at the very beginning indent the line; those at which it breaks go.
  ///
  /// It does not break behind a number, which keeps its unit, nor behind the exclamation mark in
  /// front of one, unless these have no room in one line. A word that has no room behind the indent
  /// has a smaller one. So a number is whole if a line has room for it.
  FlowingLine& words(std::string_view text);

  /// Adds a name. If a line of its own has room for all of it, but this one has not, it begins
  /// there; else it begins here and goes on wherever a line is full. A mark stays with its
  /// character.
  FlowingLine& name(std::string_view text);

  /// The lines, without a final line feed. Blanks at the end of the last words are left out.
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
  std::size_t blanks_ = 0;  ///< that come before what is added next
};

}  // namespace update_metadata_tool::terminal
