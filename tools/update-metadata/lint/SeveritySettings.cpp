#include "lint/SeveritySettings.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "lint/Severity.h"
#include "output/Text.h"

namespace update_metadata_tool::lint {
namespace {

namespace diagnosis = install::update_metadata_parser::diagnosis;

}  // namespace

SeveritySettings::SeveritySettings() {
  for (const diagnosis::RuleDescription& description : diagnosis::allRules()) {
    severities_[static_cast<std::size_t>(description.rule)] = description.severity;
  }
}

std::string SeveritySettings::add(std::string_view choice) {
  const std::size_t sign = choice.find('=');
  if (sign == std::string_view::npos) {
    return "'" + output::toVisible(choice) + "' is not of the form RULE=SEVERITY";
  }
  const std::string_view id = choice.substr(0, sign);
  const std::string_view name = choice.substr(sign + 1);
  const std::optional<Rule> rule = diagnosis::findRule(id);
  if (!rule) {
    return "'" + output::toVisible(id) + "' is not a rule; --list-rules lists them";
  }
  const std::optional<Severity> severity = findSeverity(name);
  if (!severity && name != kOff) {
    return "'" + output::toVisible(name) + "' is not a severity; use off, info, warning or error";
  }
  severities_[static_cast<std::size_t>(*rule)] = severity;
  return {};
}

std::optional<Severity> SeveritySettings::severityOf(Rule rule) const {
  return severities_[static_cast<std::size_t>(rule)];
}

void SeveritySettings::applyTo(Diagnosis& diagnosis) const {
  const auto apply = [this](auto& findings) {
    const auto isOff = [this](auto& finding) {
      const std::optional<Severity> severity = severityOf(*diagnosis::findRule(finding.rule));
      finding.severity = severity.value_or(finding.severity);
      return !severity;
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), isOff), findings.end());
  };
  apply(diagnosis.findings);
  apply(diagnosis.omitted);
}

}  // namespace update_metadata_tool::lint
