#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "lint/ReportWriter.h"
#include "terminal/FlowingLine.h"
#include "terminal/Terminal.h"

namespace install::update_metadata_parser::diagnosis::source {
class LineIndex;
}  // namespace install::update_metadata_parser::diagnosis::source

namespace update_metadata_tool::lint {

/// Writes findings for people, in the form of compiler messages, which editors understand:
///
///     update.json:31:7: warning: no product deletes this component, so its packages to delete are
///     ignored [unreachable-packages]
///       "delete": {
///       ^~~~~~~~
///       in: component 'core'
///       at: /components/core/delete
///       help: add the component to 'delete' of a product, or remove these packages
///
/// A finding that refers to a second place shows it as a note:
///
///     update.json:39:19: note: the previous mention
///       "extract": ["core", "core"]
///                   ^
///
/// Long lines are wrapped to the width of a terminal, with a deeper indent; a long source line is
/// cut around the place, so that the marks stay below it.
///
/// After the findings of each file comes what the library does with it, and at the end one line for
/// all files. Text of a document is shown as toVisible() does.
class TextReport : public ReportWriter {
 public:
  /// \param isColored  whether `out` is a terminal that shows colors
  /// \param columns    the most columns that lines should have, at least 20
  TextReport(std::ostream& out, bool isColored, std::size_t columns = terminal::kUnlimitedColumns)
      : out_(out), isColored_(isColored), columns_(columns) {}

  std::string write(const FileReport& report) override;

  /// Writes nothing: the reason is written to standard error.
  std::string write(const UnreadableFile& file) override;

  void finish(const LintTotals& totals) override;

 private:
  enum class Color { kPlace, kError, kWarning, kInfo, kMark };

  static Color colorOf(Severity severity);
  std::string painted(const std::string& text, Color color) const;
  void writeFinding(const std::string& file,
                    const install::update_metadata_parser::diagnosis::source::LineIndex& lines,
                    const Finding& finding);
  void writeHeading(const std::string& place, const std::string& label, Color color,
                    const std::string& message);
  terminal::FlowingLine beginDetail(const char* label) const;
  void writeReaderMessage(std::string_view message);
  void writeMarkedLine(std::string_view line, std::size_t column, std::size_t length);
  void writeVerdict(const std::string& file, const FileReport& report);

  std::ostream& out_;
  bool isColored_;
  std::size_t columns_;
};

}  // namespace update_metadata_tool::lint
