#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "lint/FileReport.h"
#include "lint/SeveritySettings.h"

namespace update_metadata_tool::lint {

/// How many bytes fixText() reads at most, apart from a multiple of the text's size.
constexpr std::size_t kMostFixingBytes = std::size_t{256} << 20U;

/// Which fixes are applied.
enum class FixKinds { kSafe, kSafeAndSuggested };

/// A problem that was fixed.
struct AppliedFix {
  std::size_t offset;     ///< of the finding, in the text before any fix
  std::string_view rule;  ///< of the finding
  std::string message;    ///< of the finding
};

/// A text after its fixes were applied.
struct FixedText {
  std::string text;
  Diagnosis diagnosis;              ///< of that text, with the severities of the settings
  std::vector<AppliedFix> applied;  ///< in the order of their offsets
  std::size_t suggested = 0;        ///< how many suggested fixes are left that were not requested

  /// Findings of that text whose fixes could not be proved, although no other syntax error is in
  /// the way.
  std::vector<Finding> unproved;

  bool isStopped = false;  ///< whether it stopped early, so that there may be more to fix
};

/// Applies the fixes of a text's findings, and those of the result, until nothing more changes.
///
/// Only what is proved is applied. If the library loads the text, it must give the same answers
/// about the result. If it does not, it must load the result, read farther in it, or, once the text
/// is JSON, find fewer errors. Fixes of rules that are off are not applied. Fixing the result again
/// changes nothing, unless it was stopped.
///
/// Each round diagnoses the text and loads the result; fixes that cannot be proved together are
/// tried in halves. This stops once `mostBytes` and 32 times the text are read, which keeps a
/// hostile text from taking hours. Exceptions of diagnose() pass through.
FixedText fixText(std::string text,
                  const install::update_metadata_parser::DiagnosisOptions& options,
                  const SeveritySettings& settings, FixKinds kinds,
                  std::size_t mostBytes = kMostFixingBytes);

}  // namespace update_metadata_tool::lint
