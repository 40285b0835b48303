#include "lint/TextReport.h"

#include <algorithm>
#include <ostream>
#include <string_view>

#include "Text.h"
#include "lint/MarkedLine.h"
#include "source/LineIndex.h"

namespace update_metadata_tool {
namespace {

constexpr const char* kIndent = "  ";

std::string count(std::size_t number, const char* thing) {
  return std::to_string(number) + ' ' + thing + (number == 1 ? "" : "s");
}

// The text reader's message has lines of its own, with a tab at their beginning. Its caret stands
// below the right byte as long as every other byte is one column wide.
void writeReaderMessage(std::string_view message, std::ostream& out) {
  while (!message.empty()) {
    const std::size_t size = std::min(message.find('\n'), message.size());
    std::string line(message.substr(0, size));
    std::replace(line.begin(), line.end(), '\t', ' ');
    out << kIndent << kIndent << (line.empty() ? line : toVisible(line)) << '\n';
    message.remove_prefix(std::min(size + 1, message.size()));
  }
}

}  // namespace

TextReport::Colour TextReport::colourOf(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return Colour::kError;
    case Severity::kWarning:
      return Colour::kWarning;
    default:
      return Colour::kInfo;
  }
}

std::string TextReport::painted(const std::string& text, Colour colour) const {
  if (!isColoured_) {
    return text;
  }
  // In the order of Colour: bold, red, magenta, cyan, green.
  constexpr const char* kCodes[] = {"1", "1;31", "1;35", "1;36", "1;32"};
  return std::string("\x1B[") + kCodes[static_cast<std::size_t>(colour)] + 'm' + text + "\x1B[m";
}

void TextReport::writePlace(const std::string& file, const LineIndex& lines, std::size_t offset) {
  const Position position = lines.positionOf(offset);
  out_ << painted(file + ':' + std::to_string(position.line) + ':' +
                      std::to_string(position.column) + ':',
                  Colour::kPlace)
       << ' ';
}

void TextReport::writeMarkedLine(const LineIndex& lines, std::size_t offset, std::size_t length) {
  const Position position = lines.positionOf(offset);
  const MarkedLine marked = markLine(lines.lineText(position.line), position.column - 1, length);
  if (marked.line.empty()) {
    return;  // nothing to be seen
  }
  const std::size_t caret = marked.marks.find('^');
  out_ << kIndent << marked.line << '\n'
       << kIndent << marked.marks.substr(0, caret)
       << painted(marked.marks.substr(caret), Colour::kMark) << '\n';
}

void TextReport::writeFinding(const std::string& file, const LineIndex& lines,
                              const Finding& finding) {
  writePlace(file, lines, finding.offset);
  out_ << painted(std::string(nameOf(finding.severity)) + ':', colourOf(finding.severity)) << ' '
       << toVisible(finding.message) << " [" << describe(finding.rule).id << "]\n";
  writeMarkedLine(lines, finding.offset, finding.length);
  if (!finding.item.empty()) {
    out_ << kIndent << "in: " << toVisible(finding.item) << '\n';
  }
  if (!finding.pointer.empty()) {
    out_ << kIndent << "at: " << toVisible(finding.pointer) << '\n';
  }
  out_ << kIndent << "help: " << toVisible(finding.advice) << '\n';
  for (const RelatedPlace& related : finding.related) {
    writePlace(file, lines, related.offset);
    out_ << painted("note:", Colour::kInfo) << ' ' << toVisible(related.message) << '\n';
    writeMarkedLine(lines, related.offset, 1);
  }
  out_ << '\n';
}

void TextReport::writeVerdict(const std::string& file, const FileReport& report) {
  out_ << file << ": ";
  if (!report.exception) {
    out_ << "the library loads this document\n";
    return;
  }
  out_ << "the library refuses this document with " << report.exception->type << ": \""
       << toVisible(report.exception->text) << "\"\n";
  if (!report.readerMessage.empty()) {
    out_ << kIndent << "the text reader's own message, which the library leaves out:\n";
    writeReaderMessage(report.readerMessage, out_);
  }
}

void TextReport::write(const FileReport& report) {
  const std::string file = toVisible(report.file);
  if (!report.findings.empty()) {
    const LineIndex lines(report.text);
    for (const Finding& finding : report.findings) {
      writeFinding(file, lines, finding);
    }
  }
  for (const RuleDescription& description : allRules()) {
    const std::size_t omitted = report.omitted[static_cast<std::size_t>(description.rule)];
    if (omitted != 0) {
      out_ << file << ": " << count(omitted, "more finding") << " not shown [" << description.id
           << "]\n";
    }
  }
  writeVerdict(file, report);
}

void TextReport::write(const UnreadableFile& /*file*/) {}

void TextReport::finish(const LintTotals& totals) {
  const std::size_t refused = totals.files - totals.loads - totals.unreadable;
  out_ << count(totals.files, "file") << ": " << totals.loads
       << (totals.loads == 1 ? " loads" : " load");
  if (refused != 0) {
    out_ << ", " << refused << (refused == 1 ? " does" : " do") << " not load";
  }
  if (totals.unreadable != 0) {
    out_ << ", " << totals.unreadable << " could not be read";
  }
  out_ << "; " << count(totals.errors, "error") << ", " << count(totals.warnings, "warning") << ", "
       << count(totals.infos, "info") << '\n';
}

}  // namespace update_metadata_tool
