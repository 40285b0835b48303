#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "input/DocumentLimits.h"
#include "lint/FileFixing.h"
#include "lint/ReportWriter.h"
#include "lint/SeveritySettings.h"

namespace update_metadata_tool::lint {

/// The third value of --format.
constexpr const char* kSarifFormat = "sarif";

/// Which files are checked, and how that is reported.
struct LintOptions {
  std::vector<std::string> files;
  input::GivenLimits limits;
  std::optional<std::u16string> productData;
  std::string format;  ///< a value of --format
  SeveritySettings severities;
  std::optional<FixSettings> fixing;  ///< nothing if the files are only checked
  std::size_t processes = 1;          ///< how many files are checked at a time
};

/// Returns whether standard input is fixed. It is the only file then.
bool isFixingInput(const LintOptions& options);

/// Checks files, or fixes them, and writes the report to `out`; if standard input is fixed, the
/// report goes to `err`, and for a dry run there is none.
///
/// A file that cannot be read is reported on `err`: the first line is the exception's text, escaped
/// for a terminal, the second one says which file it is about and what to do. The others are still
/// checked. The same holds for a file whose process is killed.
LintTotals lintFiles(const LintOptions& options, std::ostream& out, std::ostream& err);

}  // namespace update_metadata_tool::lint
