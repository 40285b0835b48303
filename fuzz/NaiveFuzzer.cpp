// Any text as JSON: the reader and the naive reader agree on the value or on the whole failure.

#include <sstream>
#include <string>

#include "Fuzzer.h"
#include "Require.h"
#include "support/JsonOutcome.h"

namespace {

// The naive reader recurses and reads some parts repeatedly.
constexpr std::size_t kMostBytes = 2048;

void compare(const std::string& text, bool allowComments) {
  const test_support::JsonOutcome found = test_support::outcomeOf(text, allowComments);
  const test_support::JsonOutcome expected = test_support::naiveOutcomeOf(text, allowComments);
  if (!(found == expected)) {
    std::ostringstream foundText;
    std::ostringstream expectedText;
    foundText << found;
    expectedText << expected;
    fuzz::requireEqual(foundText.str(), expectedText.str(), "the readers disagree");
    fuzz::require(false, "the readers disagree in a detail that is not shown");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMostBytes) {
    return -1;
  }
  const std::string text(data, data + size);
  compare(text, false);
  if (text.find('/') != std::string::npos) {
    compare(text, true);
  }
  return 0;
}
