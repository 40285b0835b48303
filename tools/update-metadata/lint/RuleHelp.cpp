#include "lint/RuleHelp.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include "diagnosis/Rule.h"
#include "lint/RuleExplanations.h"
#include "lint/Severity.h"

namespace update_metadata_tool::lint {
namespace {

using install::update_metadata_parser::diagnosis::allRules;
using install::update_metadata_parser::diagnosis::RuleDescription;

std::string padded(std::string_view text, std::size_t width) {
  std::string result(text);
  result.resize(std::max(width, text.size()), ' ');
  return result;
}

}  // namespace

void writeRuleList(const SeveritySettings& settings, std::ostream& out) {
  constexpr std::size_t kSeverityWidth = std::string_view("warning").size();
  std::size_t idWidth = 0;
  for (const RuleDescription& description : allRules()) {
    idWidth = std::max(idWidth, std::string_view(description.id).size());
  }
  for (const RuleDescription& description : allRules()) {
    out << padded(description.id, idWidth) << "  "
        << padded(nameOf(settings.severityOf(description.rule)), kSeverityWidth) << "  "
        << description.summary << '\n';
  }
}

void writeExplanation(Rule rule, const SeveritySettings& settings, std::ostream& out) {
  const RuleDescription& description = allRules()[static_cast<std::size_t>(rule)];
  out << description.id << " (" << nameOf(settings.severityOf(rule)) << "): " << description.summary
      << "\n\n"
      << explain(rule) << '\n';
}

void writeRulePage(std::ostream& out) {
  out << "# The rules of lint\n\n"
         "'update-metadata lint --explain RULE' prints the same text. '--severity' changes the "
         "severity\n"
         "of a rule.\n";
  for (const RuleDescription& description : allRules()) {
    out << "\n## " << description.id << "\n\n"
        << nameOf(description.severity) << ": " << description.summary << ".\n\n"
        << explain(description.rule) << '\n';
  }
}

}  // namespace update_metadata_tool::lint
