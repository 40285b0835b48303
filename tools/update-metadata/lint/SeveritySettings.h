#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "diagnosis/Finding.h"

namespace update_metadata_tool::lint {

using namespace install::update_metadata_parser::diagnosis;

/// The severities that the user has set for rules instead of their defaults.
class SeveritySettings {
 public:
  /// Adds one setting, written as RULE=SEVERITY; a later one for the same rule replaces it.
  ///
  /// Returns what is wrong with it and what to do, or an empty text if it was added.
  std::string add(std::string_view choice);

  Severity severityOf(Rule rule) const;

  /// Gives each finding the severity that is set for its rule, if any, and removes the findings of
  /// rules that are off, including the counts of omitted ones.
  void applyTo(FileReport& report) const;

 private:
  std::array<std::optional<Severity>, kRuleCount> chosen_;
};

}  // namespace update_metadata_tool::lint
