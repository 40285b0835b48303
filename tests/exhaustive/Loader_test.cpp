// A document in which any one byte is replaced by any other: loading it has the same outcome with
// the reader as with the naive reader. Truncated documents and missing bytes are covered by every
// ordinary test run.

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "support/LoadOutcome.h"
#include "support/ValueText.h"

namespace {

using test_support::loadOutcomeOf;
using test_support::naiveLoadOutcomeOf;
using test_support::quoted;
using test_support::variedDocument;

constexpr int kShares = 64;

class DamagedDocument : public ::testing::TestWithParam<int> {};

TEST_P(DamagedDocument, IsLoadedAlikeWithAnyByteReplaced) {
  std::size_t count = 0;
  for (auto place = static_cast<std::size_t>(GetParam()); place < variedDocument().size();
       place += kShares) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string text = variedDocument();
      text[place] = static_cast<char>(static_cast<unsigned char>(byte));
      ASSERT_EQ(loadOutcomeOf(text), naiveLoadOutcomeOf(text)) << "for " << quoted(text);
      count += text == variedDocument() ? 0U : 1U;
    }
  }
  RecordProperty("inputs", std::to_string(count));
}

INSTANTIATE_TEST_SUITE_P(EveryPlace, DamagedDocument, ::testing::Range(0, kShares));

}  // namespace
