#include "command/HelpText.h"

#include <algorithm>
#include <memory>

#include <CLI/CLI.hpp>

#include "terminal/Terminal.h"

namespace update_metadata_tool::command {
namespace {

constexpr std::size_t kFewestColumnsOfText = 30;
constexpr std::size_t kDeepestIndent = 10;

class FittingFormatter : public CLI::Formatter {
 public:
  std::string make_help(const CLI::App* app, std::string name,
                        CLI::AppFormatMode mode) const override {
    return fitToColumns(Formatter::make_help(app, std::move(name), mode),
                        terminal::outputColumns());
  }
};

/// One line that is too long.
class LongLine {
 public:
  LongLine(std::string_view line, std::size_t columns) : columns_(columns) {
    const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
    const std::size_t gap = line.find("  ", indent);
    const std::size_t second =
        gap == std::string_view::npos ? gap : line.find_first_not_of(' ', gap);
    const std::size_t column = second == std::string_view::npos ? indent : second;
    if (column + kFewestColumnsOfText <= columns && column > kDeepestIndent) {
      // There is room below the second column, or as deep as the line itself begins.
      text_ = line.substr(0, column);
      line.remove_prefix(column);
      indent_ = column;
    } else if (indent > kDeepestIndent) {
      text_.assign(kDeepestIndent, ' ');
      line.remove_prefix(indent);
      indent_ = kDeepestIndent;
    } else {
      text_.assign(indent, ' ');
      line.remove_prefix(indent);
      indent_ = indent + 2;
    }
    column_ = text_.size();
    addWords(line);
  }

  const std::string& text() const { return text_; }

 private:
  void addWords(std::string_view line) {
    std::size_t blanks = 0;
    while (!line.empty()) {
      const std::size_t size = std::min(line.find(' '), line.size());
      if (column_ + blanks + size > columns_ && blanks != 0) {
        text_ += '\n' + std::string(indent_, ' ');
        column_ = indent_;
        blanks = 0;
      }
      text_.append(blanks, ' ').append(line.substr(0, size));
      column_ += blanks + size;
      line.remove_prefix(size);
      blanks = std::min(line.find_first_not_of(' '), line.size());
      line.remove_prefix(blanks);
    }
  }

  std::size_t columns_;
  std::size_t indent_ = 0;  // of further lines
  std::string text_;
  std::size_t column_ = 0;
};

}  // namespace

std::string fitToColumns(std::string_view text, std::size_t columns) {
  std::string fitting;
  while (!text.empty()) {
    const std::size_t size = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, size);
    fitting += size <= columns ? std::string(line) : LongLine(line, columns).text();
    text.remove_prefix(size);
    if (!text.empty()) {
      fitting += '\n';
      text.remove_prefix(1);
    }
  }
  return fitting;
}

void fitHelpToTerminal(CLI::App& app) {
  app.formatter(std::make_shared<FittingFormatter>());
}

}  // namespace update_metadata_tool::command
