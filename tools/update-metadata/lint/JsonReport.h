#pragma once

#include <iosfwd>

#include "lint/ReportWriter.h"

namespace update_metadata_tool::lint {

/// Writes findings for programs, as one line of JSON for all files; docs/lint.md documents it.
///
/// Bytes that are not UTF-8 become U+FFFD. Memory does not grow with the number of files or
/// findings.
class JsonReport : public ReportWriter {
 public:
  explicit JsonReport(std::ostream& out) : out_(out) {}

  void begin() override;
  const char* separator() const override { return ","; }
  std::string write(const FileReport& report) override;
  std::string write(const UnreadableFile& file) override;
  void finish(const LintTotals& totals) override;

 private:
  std::ostream& out_;
};

}  // namespace update_metadata_tool::lint
