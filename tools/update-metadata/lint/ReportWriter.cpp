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
    case Severity::kOff:
      break;
  }
}

}  // namespace

void LintTotals::count(const FileReport& report, const SeveritySettings& settings) {
  ++files;
  loads += report.loads ? 1 : 0;
  for (const Finding& finding : report.findings) {
    add(finding.severity, 1, *this);
  }
  for (const RuleDescription& description : allRules()) {
    const auto index = static_cast<std::size_t>(description.rule);
    add(settings.severityOf(description.rule), report.omitted[index], *this);
  }
}

void LintTotals::count(const UnreadableFile& /*file*/) {
  ++files;
  ++unreadable;
}

}  // namespace update_metadata_tool::lint
