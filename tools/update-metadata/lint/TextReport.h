#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "lint/ReportWriter.h"
#include "terminal/FlowingLine.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::source {
class LineIndex;
}  // namespace update_metadata_tool::source

namespace update_metadata_tool::lint {

/// Writes findings for people, in the form of a compiler's, so that editors understand it:
///
///     update.json:31:7: warning: no product deletes this component, so its packages to delete are
///     in no answer [unreachable-packages]
///       "delete": {
///       ^~~~~~~~
///       in: component 'core'
///       at: /components/core/delete
///       help: add the component to 'delete' of a product, or remove these packages
///
/// A finding that speaks of a second place shows it as a note:
///
///     update.json:39:19: note: the name before it
///       "extract": ["core", "core"]
///                   ^
///
/// Lines that a terminal has no room for go on in further lines at a deeper indent; of a source
/// line only what is around the place is shown, so that the marks stay below it.
///
/// Then, for each file, what the library does with it, and in the end one line for all files. What
/// comes from a document is shown as toVisible() does.
class TextReport : public ReportWriter {
 public:
  /// \param isColoured  whether `out` is a terminal that shall show colours
  /// \param columns     as many as lines should have at most, from 20 on
  TextReport(std::ostream& out, bool isColoured, std::size_t columns = terminal::kUnlimitedColumns)
      : out_(out), isColoured_(isColoured), columns_(columns) {}

  void write(const FileReport& report) override;

  /// Writes nothing: the reason is written to standard error.
  void write(const UnreadableFile& file) override;

  void finish(const LintTotals& totals) override;

 private:
  enum class Colour { kPlace, kError, kWarning, kInfo, kMark };

  static Colour colourOf(Severity severity);
  std::string painted(const std::string& text, Colour colour) const;
  void writeFinding(const std::string& file, const source::LineIndex& lines,
                    const Finding& finding);
  void writeHeading(const std::string& place, const std::string& label, Colour colour,
                    const std::string& message);
  terminal::FlowingLine beginDetail(const char* label) const;
  void writeReaderMessage(std::string_view message);
  void writeMarkedLine(const source::LineIndex& lines, std::size_t offset, std::size_t length);
  void writeVerdict(const std::string& file, const FileReport& report);

  std::ostream& out_;
  bool isColoured_;
  std::size_t columns_;
};

}  // namespace update_metadata_tool::lint
