#include "lint/SeveritySettings.h"

#include <algorithm>
#include <cstddef>

#include "output/Text.h"

namespace update_metadata_tool::lint {

std::string SeveritySettings::add(std::string_view choice) {
  const std::size_t sign = choice.find('=');
  if (sign == std::string_view::npos) {
    return "'" + output::toVisible(choice) + "' is not of the form RULE=SEVERITY";
  }
  const std::string_view id = choice.substr(0, sign);
  const std::string_view name = choice.substr(sign + 1);
  const std::optional<Rule> rule = findRule(id);
  if (!rule) {
    return "'" + output::toVisible(id) + "' is not a rule; --list-rules lists them";
  }
  const std::optional<Severity> severity = findSeverity(name);
  if (!severity) {
    return "'" + output::toVisible(name) + "' is not a severity; use off, info, warning or error";
  }
  chosen_[static_cast<std::size_t>(*rule)] = severity;
  return {};
}

Severity SeveritySettings::severityOf(Rule rule) const {
  return chosen_[static_cast<std::size_t>(rule)].value_or(describe(rule).severity);
}

void SeveritySettings::applyTo(FileReport& report) const {
  for (Finding& finding : report.findings) {
    finding.severity = chosen_[static_cast<std::size_t>(finding.rule)].value_or(finding.severity);
  }
  const auto isOff = [](const Finding& finding) { return finding.severity == Severity::kOff; };
  report.findings.erase(std::remove_if(report.findings.begin(), report.findings.end(), isOff),
                        report.findings.end());
  for (const RuleDescription& description : allRules()) {
    if (severityOf(description.rule) == Severity::kOff) {
      report.omitted[static_cast<std::size_t>(description.rule)] = 0;
    }
  }
}

}  // namespace update_metadata_tool::lint
