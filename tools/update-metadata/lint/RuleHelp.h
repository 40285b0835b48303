#pragma once

#include <iosfwd>

#include "lint/SeveritySettings.h"

namespace update_metadata_tool::lint {

/// Writes one line for each rule: its id, its severity under these settings, its summary.
void writeRuleList(const SeveritySettings& settings, std::ostream& out);

/// Writes the id, the severity, the summary and the explanation of one rule.
void writeExplanation(Rule rule, const SeveritySettings& settings, std::ostream& out);

/// Writes the page of the documentation that explains every rule, in Markdown.
void writeRulePage(std::ostream& out);

}  // namespace update_metadata_tool::lint
