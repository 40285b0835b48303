#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace test_support {

/// The outcome of loading a text as "document.json": the calls that the handler received, and the
/// failure as failureOf() describes it.
struct LoadOutcome {
  std::vector<std::string> calls;
  std::string failure;
};

bool operator==(const LoadOutcome& left, const LoadOutcome& right);
std::ostream& operator<<(std::ostream& stream, const LoadOutcome& outcome);

/// Loads a text.
LoadOutcome loadOutcomeOf(const std::string& text);

/// Loads a text step by step, with the naive reader.
LoadOutcome naiveLoadOutcomeOf(const std::string& text);

/// Returns a valid document of less than 1,000 bytes that has every section, escapes, white space,
/// repeated keys, typed payloads and numbers of many forms.
const std::string& variedDocument();

}  // namespace test_support
