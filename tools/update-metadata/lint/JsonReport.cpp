#include "lint/JsonReport.h"

#include <optional>
#include <ostream>

#include "lint/JsonPieces.h"
#include "lint/Severity.h"
#include "output/Digest.h"
#include "output/JsonWriter.h"

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

void JsonReport::begin() {
  output::JsonWriter json(out_);
  json.beginObject().member("version", kFormatVersion).name("files").beginArray();
}

std::string JsonReport::write(const FileReport& report) {
  output::JsonWriter json(out_);
  const Diagnosis& diagnosis = report.diagnosis;
  json.beginObject().member("file", report.file).member("loads", diagnosis.loads());
  json.name("exception");
  writeException(diagnosis.exception, json);
  json.name("findings").array(diagnosis.findings, writeFinding);
  json.member("readable", true).name("readerMessage");
  if (diagnosis.readerMessage.empty()) {
    json.value(nullptr);
  } else {
    json.value(diagnosis.readerMessage);
  }
  json.name("omitted");
  writeOmitted(diagnosis.omitted, json);
  json.member("sha256", output::sha256(report.text)).endObject();
  return {};
}

std::string JsonReport::write(const UnreadableFile& file) {
  output::JsonWriter json(out_);
  json.beginObject().member("file", file.file).member("loads", false).name("exception");
  writeException(file.exception, json);
  json.name("findings").beginArray().endArray();
  json.member("readable", false).member("readerMessage", nullptr);
  json.name("omitted").beginObject().endObject().member("sha256", nullptr).endObject();
  return {};
}

void JsonReport::finish(const LintTotals& totals) {
  output::JsonWriter json(out_);
  json.endArray()
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
