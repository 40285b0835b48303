#include "command/HelpText.h"

#include <algorithm>
#include <memory>

#include <CLI/CLI.hpp>

#include "terminal/FlowingLine.h"
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

std::string breakLine(std::string_view line, std::size_t columns) {
  const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
  const std::size_t gap = line.find("  ", indent);
  const std::size_t second = gap == std::string_view::npos ? gap : line.find_first_not_of(' ', gap);
  const std::size_t column = second == std::string_view::npos ? indent : second;
  if (column + kFewestColumnsOfText <= columns && column > kDeepestIndent) {
    // Further lines fit below the second column, or at the line's own indent.
    return terminal::FlowingLine(columns, column).words(line).text();
  }
  if (indent > kDeepestIndent) {
    line.remove_prefix(indent - kDeepestIndent);
    return terminal::FlowingLine(columns, kDeepestIndent).words(line).text();
  }
  return terminal::FlowingLine(columns, indent + 2).words(line).text();
}

}  // namespace

std::string fitToColumns(std::string_view text, std::size_t columns) {
  std::string fitting;
  while (!text.empty()) {
    const std::size_t size = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, size);
    fitting += size <= columns ? std::string(line) : breakLine(line, columns);
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
