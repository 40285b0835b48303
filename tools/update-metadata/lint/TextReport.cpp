#include "lint/TextReport.h"

#include <algorithm>
#include <ostream>
#include <string_view>
#include <utility>

#include "diagnosis/source/LineIndex.h"
#include "lint/MarkedLine.h"
#include "lint/Severity.h"
#include "output/Count.h"
#include "output/Text.h"
#include "terminal/DisplayWidth.h"

namespace update_metadata_tool::lint {
namespace {

using output::count;
using output::toVisible;
namespace diagnosis = install::update_metadata_parser::diagnosis;
using diagnosis::source::LineIndex;
using terminal::FlowingLine;

constexpr const char* kIndent = "  ";
constexpr std::size_t kFurtherIndent = 4;

// "update.json:31:7:", for a finding or a related place.
template <class Place>
std::string placeIn(const std::string& file, const Place& place) {
  return file + ':' + std::to_string(place.line) + ':' + std::to_string(place.column) + ':';
}

// The columns that are left for a line of the document after an indent.
std::size_t columnsBehind(std::string_view indent, std::size_t columns) {
  return std::min(columns - indent.size(), kColumnsOfMarkedLine);
}

std::string_view takeLine(std::string_view& text) {
  const std::size_t size = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, size);
  text.remove_prefix(std::min(size + 1, text.size()));
  return line;
}

}  // namespace

TextReport::Color TextReport::colorOf(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return Color::kError;
    case Severity::kWarning:
      return Color::kWarning;
    default:
      return Color::kInfo;
  }
}

std::string TextReport::painted(const std::string& text, Color color) const {
  if (!isColored_) {
    return text;
  }
  // In the order of Color: bold, red, magenta, cyan, green.
  constexpr const char* kCodes[] = {"1", "1;31", "1;35", "1;36", "1;32"};
  return std::string("\x1B[") + kCodes[static_cast<std::size_t>(color)] + 'm' + text + "\x1B[m";
}

void TextReport::writeHeading(const std::string& place, const std::string& label, Color color,
                              const std::string& message) {
  FlowingLine line(columns_, kFurtherIndent);
  line.name(place);
  const std::size_t placeEnd = line.text().size();
  line.words(' ' + label);
  const std::size_t labelEnd = line.text().size();
  line.words(' ' + message);
  const std::string& text = line.text();
  const std::size_t labelBegin = text.find_first_not_of(" \n", placeEnd);
  out_ << painted(text.substr(0, placeEnd), Color::kPlace)
       << text.substr(placeEnd, labelBegin - placeEnd)
       << painted(text.substr(labelBegin, labelEnd - labelBegin), color) << text.substr(labelEnd)
       << '\n';
}

// The message has several lines, which start with a tab. Its caret is below the right byte if every
// byte is one column wide.
void TextReport::writeReaderMessage(std::string_view message) {
  const std::string indent = std::string(kIndent) + kIndent;
  while (!message.empty()) {
    const std::string_view raw = takeLine(message);
    std::string line(raw);
    std::replace(line.begin(), line.end(), '\t', ' ');
    const std::string shown = line.empty() ? line : toVisible(line);
    if (terminal::displayWidth(shown) <= columns_ - indent.size()) {
      out_ << indent << shown << '\n';
      continue;
    }
    const std::size_t caret = message.find_first_not_of(" \t");
    if (caret == std::string_view::npos || message[caret] != '^') {
      out_ << FlowingLine(columns_, kFurtherIndent).words(indent + shown) << '\n';
      continue;
    }
    takeLine(message);
    const MarkedLine marked =
        markLine(raw, std::min(caret, raw.size()), 1, columnsBehind(indent, columns_));
    out_ << indent << marked.line << '\n' << indent << marked.marks << '\n';
  }
}

void TextReport::writeMarkedLine(std::string_view line, std::size_t column, std::size_t length) {
  const MarkedLine marked = markLine(line, column - 1, length, columnsBehind(kIndent, columns_));
  if (marked.line.empty()) {
    return;  // nothing visible
  }
  const std::size_t caret = marked.marks.find('^');
  out_ << kIndent << marked.line << '\n'
       << kIndent << marked.marks.substr(0, caret)
       << painted(marked.marks.substr(caret), Color::kMark) << '\n';
}

FlowingLine TextReport::beginDetail(const char* label) const {
  return FlowingLine(columns_, kFurtherIndent).words(std::string(kIndent) + label);
}

void TextReport::writeFinding(const std::string& file, const LineIndex& lines,
                              const Finding& finding) {
  writeHeading(placeIn(file, finding), std::string(nameOf(finding.severity)) + ':',
               colorOf(finding.severity),
               toVisible(finding.message) + " [" + std::string(finding.rule) + ']');
  writeMarkedLine(lines.lineText(finding.line), finding.column, finding.length);
  if (!finding.item.empty()) {
    out_ << beginDetail("in: ").words(toVisible(finding.item)) << '\n';
  }
  if (!finding.pointer.empty()) {
    out_ << beginDetail("at: ").name(toVisible(finding.pointer)) << '\n';
  }
  out_ << beginDetail("help: ").words(toVisible(finding.advice)) << '\n';
  for (const RelatedPlace& related : finding.related) {
    writeHeading(placeIn(file, related), "note:", Color::kInfo, toVisible(related.message));
    writeMarkedLine(lines.lineText(related.line), related.column, 1);
  }
  out_ << '\n';
}

void TextReport::writeVerdict(const std::string& file, const FileReport& report) {
  const Diagnosis& diagnosis = report.diagnosis;
  FlowingLine line(columns_, kFurtherIndent);
  line.name(file);
  if (!diagnosis.exception) {
    out_ << line.words(": the library loads this document") << '\n';
    return;
  }
  out_ << line.words(": the library rejects this document with " + diagnosis.exception->type +
                     ": \"" + toVisible(diagnosis.exception->text) + '"')
       << '\n';
  if (!diagnosis.readerMessage.empty()) {
    out_ << beginDetail("message of the library's text reader:") << '\n';
    writeReaderMessage(diagnosis.readerMessage);
  }
}

std::string TextReport::write(const FileReport& report) {
  const std::string file = toVisible(report.file);
  if (!report.diagnosis.findings.empty()) {
    const LineIndex lines(report.text);
    for (const Finding& finding : report.diagnosis.findings) {
      writeFinding(file, lines, finding);
    }
  }
  for (const OmittedFindings& omitted : report.diagnosis.omitted) {
    out_ << FlowingLine(columns_, kFurtherIndent)
                .name(file)
                .words(": " + count(omitted.count, "more finding") + " not shown [" +
                       std::string(omitted.rule) + ']')
         << '\n';
  }
  writeVerdict(file, report);
  return {};
}

std::string TextReport::write(const UnreadableFile& /*file*/) {
  return {};
}

void TextReport::finish(const LintTotals& totals) {
  std::string problems;
  for (const auto& [findings, what] :
       {std::pair(totals.errors, "error"), {totals.warnings, "warning"}, {totals.infos, "info"}}) {
    if (findings != 0) {
      problems += (problems.empty() ? "" : ", ") + count(findings, what);
    }
  }
  const std::size_t checked = totals.files - totals.unreadable;
  const std::size_t rejected = checked - totals.loads;
  std::string text = count(checked, "file") + " checked";
  if (totals.unreadable != 0) {
    text += ", " + std::to_string(totals.unreadable) + " could not be read";
  }
  if (rejected != 0) {
    text += ": " + std::to_string(rejected) + " cannot be loaded";
  }
  if (!problems.empty()) {
    text += (rejected != 0 ? "; " : ": ") + problems;
  } else if (checked != 0 && rejected == 0) {
    text += ": no problems found";
  }
  out_ << FlowingLine(columns_, kFurtherIndent).words(text) << '\n';
}

}  // namespace update_metadata_tool::lint
