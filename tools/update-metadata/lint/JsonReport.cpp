#include "lint/JsonReport.h"

#include <array>
#include <cstddef>
#include <optional>
#include <ostream>
#include <utility>

#include "OrderedJson.h"
#include "lint/JsonPieces.h"
#include "source/LineIndex.h"

namespace update_metadata_tool {
namespace {

constexpr int kVersion = 1;

OrderedJson toJson(const RelatedPlace& related, const LineIndex& lines) {
  const Position position = lines.positionOf(related.offset);
  return {{"message", related.message},
          {"line", position.line},
          {"column", position.column},
          {"offset", related.offset}};
}

OrderedJson toJson(const Finding& finding, const LineIndex& lines) {
  const Position position = lines.positionOf(finding.offset);
  OrderedJson related = OrderedJson::array();
  for (const RelatedPlace& place : finding.related) {
    related.push_back(toJson(place, lines));
  }
  return {{"rule", describe(finding.rule).id},
          {"severity", nameOf(finding.severity)},
          {"message", finding.message},
          {"advice", finding.advice},
          {"line", position.line},
          {"column", position.column},
          {"offset", finding.offset},
          {"pointer", finding.pointer},
          {"length", finding.length},
          {"item", finding.item},
          {"related", std::move(related)}};
}

}  // namespace

JsonReport::JsonReport(std::ostream& out) : out_(out) {
  out_ << "{\"version\":" << kVersion << ",\"files\":[";
}

void JsonReport::separate() {
  if (!isFirst_) {
    out_ << ',';
  }
  isFirst_ = false;
}

void JsonReport::write(const FileReport& report) {
  separate();
  out_ << "{\"file\":";
  writeJson(report.file, out_);
  out_ << ",\"loads\":" << (report.loads ? "true" : "false") << ",\"exception\":";
  writeJson(toJson(report.exception), out_);
  out_ << ",\"findings\":[";
  if (!report.findings.empty()) {
    const LineIndex lines(report.text);
    const char* separator = "";
    for (const Finding& finding : report.findings) {
      out_ << separator;
      writeJson(toJson(finding, lines), out_);
      separator = ",";
    }
  }
  out_ << "],\"readable\":true,\"readerMessage\":";
  writeJson(report.readerMessage.empty() ? OrderedJson() : OrderedJson(report.readerMessage), out_);
  out_ << ",\"omitted\":";
  writeJson(toJson(report.omitted), out_);
  out_ << '}';
}

void JsonReport::write(const UnreadableFile& file) {
  separate();
  writeJson({{"file", file.file},
             {"loads", false},
             {"exception", toJson(std::optional(file.exception))},
             {"findings", OrderedJson::array()},
             {"readable", false},
             {"readerMessage", nullptr},
             {"omitted", OrderedJson::object()}},
            out_);
}

void JsonReport::finish(const LintTotals& totals) {
  out_ << "],\"totals\":";
  writeJson({{"files", totals.files},
             {"loads", totals.loads},
             {"unreadable", totals.unreadable},
             {"errors", totals.errors},
             {"warnings", totals.warnings},
             {"infos", totals.infos}},
            out_);
  out_ << "}\n";
}

}  // namespace update_metadata_tool
