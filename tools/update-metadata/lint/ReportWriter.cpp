#include "lint/ReportWriter.h"

namespace update_metadata_tool::lint {
namespace {

void countFindings(Severity severity, std::size_t findings, LintTotals& totals) {
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
    countFindings(finding.severity, 1, *this);
  }
  for (const OmittedFindings& omitted : report.diagnosis.omitted) {
    countFindings(omitted.severity, omitted.count, *this);
  }
}

void LintTotals::count(const UnreadableFile& /*file*/) {
  ++files;
  ++unreadable;
}

void LintTotals::add(const LintTotals& others) {
  files += others.files;
  loads += others.loads;
  unreadable += others.unreadable;
  errors += others.errors;
  warnings += others.warnings;
  infos += others.infos;
  unfixed += others.unfixed;
}

}  // namespace update_metadata_tool::lint
