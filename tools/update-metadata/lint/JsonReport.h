#pragma once

#include <iosfwd>

#include "lint/ReportWriter.h"
#include "output/JsonWriter.h"

namespace update_metadata_tool::lint {

/// Writes findings for programs, as one line of JSON for all files; docs/lint.md documents it.
///
/// Bytes that are not UTF-8 become U+FFFD. Memory does not grow with the number of files or
/// findings.
class JsonReport : public ReportWriter {
 public:
  explicit JsonReport(std::ostream& out);

  void write(const FileReport& report) override;
  void write(const UnreadableFile& file) override;
  void finish(const LintTotals& totals) override;

 private:
  std::ostream& out_;
  output::JsonWriter json_;
};

}  // namespace update_metadata_tool::lint
