// A document with one fault of every kind at every place: loading it has the same outcome with the
// reader as with the naive reader.

#include "support/LoadOutcome.h"

#include <cstddef>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/Effort.h"
#include "support/ValueText.h"

namespace {

using namespace std::string_view_literals;
using test_support::kFullEffort;
using test_support::loadOutcomeOf;
using test_support::naiveLoadOutcomeOf;
using test_support::quoted;
using test_support::variedDocument;

void expectAgreement(const std::string& text) {
  ASSERT_EQ(loadOutcomeOf(text), naiveLoadOutcomeOf(text)) << "for " << quoted(text);
}

TEST(RichDocument, IsLoadedWhole) {
  EXPECT_EQ(loadOutcomeOf(variedDocument()).failure, "nothing");
  EXPECT_EQ(loadOutcomeOf(variedDocument()).calls.size(), 13U);
  EXPECT_LT(variedDocument().size(), 1200U);
}

TEST(DamagedDocument, IsLoadedAlikeWhereverItEnds) {
  for (std::size_t size = 0; size <= variedDocument().size() && !HasFatalFailure(); ++size) {
    expectAgreement(variedDocument().substr(0, size));
  }
}

TEST(DamagedDocument, IsLoadedAlikeWithAnyByteMissing) {
  for (std::size_t place = 0; place < variedDocument().size() && !HasFatalFailure(); ++place) {
    expectAgreement(std::string(variedDocument()).erase(place, 1));
  }
}

TEST(DamagedDocument, IsLoadedAlikeWithAnyByteChanged) {
  constexpr std::string_view kBytes = kFullEffort ? "\"\\{}[],:0-e \0\xFF"sv : "\"\\}]"sv;
  for (std::size_t place = 0; place < variedDocument().size() && !HasFatalFailure(); ++place) {
    for (const char byte : kBytes) {
      std::string text = variedDocument();
      text[place] = byte;
      expectAgreement(text);
    }
  }
}

}  // namespace
