// The text reader when memory runs out, and the documents that produce each of its codes.

#include <cstddef>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "faults/Documents.h"
#include "faults/Outcome.h"
#include "json/JsonText.h"
#include "json/ParseResult.h"
#include "json/ParserException.h"
#include "support/FailingAllocation.h"

namespace foundation::json {
namespace {

using test_support::failAt;
using test_support::FailingDocument;
using test_support::failingDocuments;
using test_support::kShortages;
using test_support::liveBlocks;
using test_support::Shortage;
using test_support::Trial;
using ::testing::UnorderedElementsAre;

int codeOf(const std::string& text) {
  try {
    parseJsonText(text);
  } catch (const ParserException& failure) {
    return failure.code();
  }
  throw std::logic_error("the text is not malformed");
}

Trial parseWithout(std::size_t nth, Shortage shortage, std::string text) {
  return failAt(nth, shortage, [&] { parseJsonText(std::move(text)); });
}

TEST(FailingDocuments, HaveEveryCodeThatATextCanHave) {
  std::set<int> codes;
  for (const FailingDocument& document : failingDocuments()) {
    if (document.code) {
      EXPECT_EQ(codeOf(document.text), *document.code) << document.name;
      codes.insert(*document.code);
    }
  }
  // kNoNull, kNoBoolean and kNoOpeningBrace are missing: whenever one of them occurs,
  // kNoOpeningQuote is reported instead.
  EXPECT_THAT(codes, UnorderedElementsAre(kSuccess, kBadUnicodeEscape, kBadEscape, kNoOpeningQuote,
                                          kNoDigit, kNoFractionDigit, kNoExponentDigit,
                                          kNoOpeningBracket, kNoArraySeparator, kNoObjectSeparator,
                                          kNoColon, kEndOfText, kNoInteger));
}

TEST(MemoryOfTheTextReader, IsGivenBackWhicheverAllocationFailsForAMalformedText) {
  for (const FailingDocument& document : failingDocuments()) {
    if (!document.code) {
      continue;
    }
    for (const Shortage shortage : kShortages) {
      std::size_t nth = 0;
      for (;; ++nth) {
        const std::size_t before = liveBlocks();
        const Trial trial = parseWithout(nth, shortage, document.text);
        ASSERT_EQ(liveBlocks(), before) << document.name << ' ' << nth;
        if (!trial.reached) {
          break;
        }
        ASSERT_TRUE(trial.outcome.isExhaustion()) << document.name << ' ' << nth;
      }
      EXPECT_GT(nth, 5U) << document.name;
    }
  }
}

}  // namespace
}  // namespace foundation::json
