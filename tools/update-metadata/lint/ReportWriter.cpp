#include "lint/ReportWriter.h"

namespace update_metadata_tool::lint {
namespace {

void add(Severity severity, std::size_t findings, LintTotals& totals) {
  switch (severity) {
    case Severity::kError:
      totals.errors += findings;
      break;
    case Severity::kWarning:
      totals.warnings += findings;
      break;
    case Severity::kInfo:
      totals.infos += findings;
      break;
  }
}

}  // namespace

void LintTotals::count(const FileReport& report) {
  ++files;
  loads += report.diagnosis.loads() ? 1U : 0U;
  for (const Finding& finding : report.diagnosis.findings) {
    add(finding.severity, 1, *this);
  }
  for (const OmittedFindings& omitted : report.diagnosis.omitted) {
    add(omitted.severity, omitted.count, *this);
  }
}

void LintTotals::count(const UnreadableFile& /*file*/) {
  ++files;
  ++unreadable;
}

}  // namespace update_metadata_tool::lint
