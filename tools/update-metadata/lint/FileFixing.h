#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "install/update_metadata_parser/Diagnosis.h"
#include "lint/FileReport.h"
#include "lint/Fixing.h"
#include "lint/SeveritySettings.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::lint {

/// What is done with fixed documents.
struct FixSettings {
  FixKinds kinds = FixKinds::kSafe;
  bool isDryRun = false;  ///< show a diff instead of replacing the file
};

/// Applies fixes to files.
class FileFixer {
 public:
  /// Fixed standard input and diffs are written to `out`, and what was done to `err`.
  FileFixer(FixSettings fixSettings, const SeveritySettings& severities, std::ostream& out,
            std::ostream& err)
      : fixSettings_(fixSettings), severities_(severities), out_(out), err_(err) {}

  /// Reads a file, fixes it as fixText() does, and replaces it if that changes anything. Reports
  /// each applied fix with its place in the text as it was. Returns what is left to report; of a
  /// file that cannot be replaced, that is everything.
  ///
  /// \throws std::ios_base::failure  it is not a regular file
  ///
  /// The exceptions of reading and of diagnose() pass through; nothing was changed then.
  FileReport fix(const std::string& file, std::uint64_t limit,
                 const install::update_metadata_parser::DiagnosisOptions& options,
                 terminal::ProgressLine& progress);

  /// Whether a file could not be replaced.
  bool hasFailed() const { return hasFailed_; }

 private:
  void reportApplied(const std::string& file, const std::string& text,
                     const std::vector<AppliedFix>& applied);
  void reportLeft(const std::string& file, const FixedText& fixed);

  FixSettings fixSettings_;
  const SeveritySettings& severities_;
  std::ostream& out_;
  std::ostream& err_;
  bool hasFailed_ = false;
};

}  // namespace update_metadata_tool::lint
