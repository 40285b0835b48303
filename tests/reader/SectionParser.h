#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/Failure.h"
#include "support/RecordingParser.h"

namespace test_support {

/// A parser with a handler, for reading single sections.
class SectionParser : public TextParser {
 public:
  SectionParser() : TextParser("") {
    setupUpdateMetaDataHandler();
    takeCalls();
  }

  /// Runs an action and returns its failure, as failureOf() does, then the handler's calls.
  template <class Action>
  std::vector<std::string> outcomeOf(Action&& action) {
    std::vector<std::string> outcome = {failureOf(action)};
    for (std::string& call : takeCalls()) {
      outcome.push_back(std::move(call));
    }
    return outcome;
  }
};

}  // namespace test_support
