#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "lint/Finding.h"

namespace update_metadata_tool::lint {

/// The severities that the user has chosen for rules, in place of their own.
class SeveritySettings {
 public:
  /// Takes one choice, written as RULE=SEVERITY; a later one for the same rule replaces it.
  ///
  /// Returns what is wrong with it and what to do, or an empty text if it was taken.
  std::string add(std::string_view choice);

  Severity severityOf(Rule rule) const;

  /// Gives each finding the chosen severity of its rule, if there is one, and removes those of
  /// rules that are off, the omitted ones, too.
  void applyTo(FileReport& report) const;

 private:
  std::array<std::optional<Severity>, kRuleCount> chosen_;
};

}  // namespace update_metadata_tool::lint
