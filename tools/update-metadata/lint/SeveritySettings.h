#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "diagnosis/Rule.h"
#include "lint/FileReport.h"

namespace update_metadata_tool::lint {

using install::update_metadata_parser::diagnosis::Rule;

/// The severity of each rule: its own, or what the user has set instead.
class SeveritySettings {
 public:
  SeveritySettings();

  /// Adds one setting, written as RULE=SEVERITY; a later one for the same rule replaces it.
  ///
  /// Returns what is wrong with it and what to do, or an empty text if it was added.
  std::string add(std::string_view choice);

  /// Nothing for a rule that is off.
  std::optional<Severity> severityOf(Rule rule) const;

  /// Gives the findings of each rule, including the omitted ones, its severity, and removes those
  /// of rules that are off.
  void applyTo(Diagnosis& diagnosis) const;

 private:
  std::array<std::optional<Severity>, install::update_metadata_parser::diagnosis::kRuleCount>
      severities_;
};

}  // namespace update_metadata_tool::lint
