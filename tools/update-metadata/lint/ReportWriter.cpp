#include "lint/ReportWriter.h"

namespace update_metadata_tool {

void Totals::count(const FileReport& report) {
  ++files;
  loads += report.loads ? 1 : 0;
  for (const Finding& finding : report.findings) {
    errors += finding.severity == Severity::kError ? 1 : 0;
    warnings += finding.severity == Severity::kWarning ? 1 : 0;
    infos += finding.severity == Severity::kInfo ? 1 : 0;
  }
}

void Totals::count(const UnreadableFile& /*file*/) {
  ++files;
  ++unreadable;
}

}  // namespace update_metadata_tool
