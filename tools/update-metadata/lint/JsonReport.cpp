#include "lint/JsonReport.h"

#include <optional>
#include <ostream>

#include "diagnosis/source/LineIndex.h"
#include "lint/JsonPieces.h"

namespace update_metadata_tool::lint {
namespace {

constexpr int kFormatVersion = 1;

void writeRelated(const RelatedPlace& related, const source::LineIndex& lines,
                  output::JsonWriter& json) {
  const source::Position position = lines.positionOf(related.offset);
  json.beginObject()
      .member("message", related.message)
      .member("line", position.line)
      .member("column", position.column)
      .member("offset", related.offset)
      .endObject();
}

void writeFinding(const Finding& finding, const source::LineIndex& lines,
                  output::JsonWriter& json) {
  const source::Position position = lines.positionOf(finding.offset);
  json.beginObject()
      .member("rule", describe(finding.rule).id)
      .member("severity", nameOf(finding.severity))
      .member("message", finding.message)
      .member("advice", finding.advice)
      .member("line", position.line)
      .member("column", position.column)
      .member("offset", finding.offset)
      .member("pointer", finding.pointer)
      .member("length", finding.length)
      .member("item", finding.item);
  json.name("related")
      .array(finding.related,
             [&lines](const RelatedPlace& place, output::JsonWriter& array) {
               writeRelated(place, lines, array);
             })
      .endObject();
}

}  // namespace

JsonReport::JsonReport(std::ostream& out) : out_(out), json_(out) {
  json_.beginObject().member("version", kFormatVersion).name("files").beginArray();
}

void JsonReport::write(const FileReport& report) {
  json_.beginObject().member("file", report.file).member("loads", report.loads).name("exception");
  writeException(report.exception, json_);
  json_.name("findings").beginArray();
  if (!report.findings.empty()) {
    const source::LineIndex lines(report.text);
    for (const Finding& finding : report.findings) {
      writeFinding(finding, lines, json_);
    }
  }
  json_.endArray().member("readable", true).name("readerMessage");
  if (report.readerMessage.empty()) {
    json_.value(nullptr);
  } else {
    json_.value(report.readerMessage);
  }
  json_.name("omitted");
  writeOmitted(report.omitted, json_);
  json_.endObject();
}

void JsonReport::write(const UnreadableFile& file) {
  json_.beginObject().member("file", file.file).member("loads", false).name("exception");
  writeException(file.exception, json_);
  json_.name("findings").beginArray().endArray();
  json_.member("readable", false).member("readerMessage", nullptr);
  json_.name("omitted").beginObject().endObject().endObject();
}

void JsonReport::finish(const LintTotals& totals) {
  json_.endArray()
      .name("totals")
      .beginObject()
      .member("files", totals.files)
      .member("loads", totals.loads)
      .member("unreadable", totals.unreadable)
      .member("errors", totals.errors)
      .member("warnings", totals.warnings)
      .member("infos", totals.infos)
      .endObject()
      .endObject();
  out_ << '\n';
}

}  // namespace update_metadata_tool::lint
