#include "lint/JsonReport.h"

#include <optional>
#include <ostream>

#include "lint/JsonPieces.h"
#include "lint/Severity.h"
#include "output/Digest.h"

namespace update_metadata_tool::lint {
namespace {

constexpr int kFormatVersion = 1;

void writeRelated(const RelatedPlace& related, output::JsonWriter& json) {
  json.beginObject()
      .member("message", related.message)
      .member("line", related.line)
      .member("column", related.column)
      .member("offset", related.offset)
      .endObject();
}

void writeFix(const std::optional<Fix>& fix, output::JsonWriter& json) {
  if (!fix) {
    json.value(nullptr);
    return;
  }
  json.beginObject()
      .member("offset", fix->offset)
      .member("length", fix->length)
      .member("replacement", fix->replacement)
      .member("safe", fix->isSafe)
      .endObject();
}

void writeFinding(const Finding& finding, output::JsonWriter& json) {
  json.beginObject()
      .member("rule", finding.rule)
      .member("severity", nameOf(finding.severity))
      .member("message", finding.message)
      .member("advice", finding.advice)
      .member("line", finding.line)
      .member("column", finding.column)
      .member("offset", finding.offset)
      .member("pointer", finding.pointer)
      .member("length", finding.length)
      .member("item", finding.item);
  json.name("related").array(finding.related, writeRelated).name("fix");
  writeFix(finding.fix, json);
  json.endObject();
}

}  // namespace

JsonReport::JsonReport(std::ostream& out) : out_(out), json_(out) {
  json_.beginObject().member("version", kFormatVersion).name("files").beginArray();
}

void JsonReport::write(const FileReport& report) {
  const Diagnosis& diagnosis = report.diagnosis;
  json_.beginObject().member("file", report.file).member("loads", diagnosis.loads());
  json_.name("exception");
  writeException(diagnosis.exception, json_);
  json_.name("findings").array(diagnosis.findings, writeFinding);
  json_.member("readable", true).name("readerMessage");
  if (diagnosis.readerMessage.empty()) {
    json_.value(nullptr);
  } else {
    json_.value(diagnosis.readerMessage);
  }
  json_.name("omitted");
  writeOmitted(diagnosis.omitted, json_);
  json_.member("sha256", output::sha256(report.text)).endObject();
}

void JsonReport::write(const UnreadableFile& file) {
  json_.beginObject().member("file", file.file).member("loads", false).name("exception");
  writeException(file.exception, json_);
  json_.name("findings").beginArray().endArray();
  json_.member("readable", false).member("readerMessage", nullptr);
  json_.name("omitted").beginObject().endObject().member("sha256", nullptr).endObject();
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
