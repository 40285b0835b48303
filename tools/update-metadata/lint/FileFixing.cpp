#include "lint/FileFixing.h"

#include <cstddef>
#include <ios>
#include <ostream>
#include <string_view>
#include <utility>

#include "command/ReplaceableDocument.h"
#include "diagnosis/source/LineIndex.h"
#include "input/DocumentText.h"
#include "lint/UnifiedDiff.h"
#include "output/Text.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::lint {
namespace {

using command::reportOutcome;
using install::update_metadata_parser::diagnose;
using install::update_metadata_parser::diagnosis::source::LineIndex;

std::string countFixes(std::size_t count, const char* what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "es");
}

// Lines whose control characters a terminal would obey, by the codes of these; tabs stay.
std::string toVisibleLines(std::string_view text) {
  std::string visible;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\t\n");
    visible += output::toVisible(text.substr(0, end));
    if (end == std::string_view::npos) {
      break;
    }
    visible += text[end];
    text.remove_prefix(end + 1);
  }
  return visible;
}

}  // namespace

void FileFixer::reportApplied(const std::string& file, const std::string& text,
                              const std::vector<AppliedFix>& applied) {
  if (applied.empty()) {
    return;
  }
  const LineIndex lines(text);
  for (const AppliedFix& fix : applied) {
    const auto [line, column] = lines.positionOf(fix.offset);
    err_ << output::toVisible(file) + ':' + std::to_string(line) + ':' + std::to_string(column) +
                (fixSettings_.isDryRun ? ": fix: " : ": fixed: ") + output::toVisible(fix.message) +
                " [" + std::string(fix.rule) + "]\n";
  }
  reportOutcome(file,
                (fixSettings_.isDryRun ? "would be changed by " : "was changed by ") +
                    countFixes(applied.size(), "fix"),
                err_);
}

void FileFixer::reportLeft(const std::string& file, const FixedText& fixed) {
  for (const Finding& finding : fixed.unproved) {
    reportOutcome(file,
                  "was not fixed at line " + std::to_string(finding.line) + ": the fix of " +
                      std::string(finding.rule) + " could not be proved",
                  err_);
  }
  if (fixed.isStopped) {
    reportOutcome(file, "takes long to fix and may need more fixes; run the command again", err_);
  }
  if (fixed.suggested != 0) {
    reportOutcome(file,
                  "has at least " + countFixes(fixed.suggested, "suggested fix") +
                      ", which --suggested applies",
                  err_);
  }
}

FileReport FileFixer::fix(const std::string& file, std::uint64_t limit,
                          const install::update_metadata_parser::DiagnosisOptions& options,
                          terminal::ProgressLine& progress) {
  const bool isFilter = file == input::kStandardInput;
  if (!fixSettings_.isDryRun && !isFilter && command::isReadOnlyOnce(file)) {
    throw std::ios_base::failure("it is not a regular file; pipe its content to 'lint --fix -'");
  }
  const command::ReplaceableDocument document(file, limit);
  FixedText fixed = fixText(document.text(), options, severities_, fixSettings_.kinds);
  progress.clear();
  const bool isChanged = fixed.text != document.text();
  if (fixSettings_.isDryRun) {
    const std::string diff = unifiedDiff(file, document.text(), fixed.text);
    out_ << (terminal::isOutputTerminal() ? toVisibleLines(diff) : diff);
  } else if (isFilter) {
    out_ << fixed.text;
  } else if (isChanged && !document.replace(fixed.text, err_)) {
    hasFailed_ = true;
    return {file, document.text(), diagnose(document.text(), options)};
  }
  reportApplied(file, document.text(), fixed.applied);
  reportLeft(file, fixed);
  return {file, std::move(fixed.text), std::move(fixed.diagnosis)};
}

}  // namespace update_metadata_tool::lint
