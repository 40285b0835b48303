// Texts of millions of bytes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "json/ParseResult.h"
#include "support/JsonOutcome.h"

namespace foundation::json {
namespace {

using test_support::JsonOutcome;
using test_support::outcomeOf;

constexpr std::size_t kManyPieces = 100000;
constexpr std::size_t kLong = 10000000;
TEST(LongArray, IsReadWhole) {
  constexpr std::size_t kElements = 1000000;
  std::string text = "[";
  for (std::size_t i = 0; i != kElements; ++i) {
    text += "0,";
  }
  text.back() = ']';
  const Array array = parseJsonText(std::move(text)).as<Array>();
  EXPECT_EQ(array.size(), kElements);
  EXPECT_EQ(std::count(array.begin(), array.end(), Value(0.0)),
            static_cast<std::ptrdiff_t>(kElements));
}

TEST(LongString, IsReadWhole) {
  const std::string content(kLong, 'x');
  EXPECT_TRUE(parseJsonText('"' + content + '"').as<std::string>() == content);
}

TEST(LongString, IsReadWholeIfItIsAllEscapes) {
  std::string text = "\"";
  std::string content;
  for (std::size_t i = 0; i != kManyPieces; ++i) {
    text += "\\n\\u00e9x";
    content += "\n\xC3\xA9x";
  }
  EXPECT_TRUE(parseJsonText(text + '"').as<std::string>() == content);
}

TEST(LongKey, IsReadWhole) {
  const std::string key(kLong, 'x');
  EXPECT_TRUE(parseJsonText("{\"" + key + "\":1}") == Value(Object{{key, 1.0}}));
}

TEST(LongNumber, IsReadWhole) {
  const std::string zeros(1000000, '0');
  EXPECT_EQ(parseJsonText("[" + zeros + "7." + zeros + "]"), Value(Array{7.0}));
  EXPECT_EQ(parseJsonText("[0." + zeros + "7e1000000]"), Value(Array{0.7}));
  EXPECT_EQ(parseJsonText("{\"qztype\":\"uint8\",\"qzdata\":[1" + zeros + "]}")["qzdata"],
            Value(Array{UINT64_MAX}));
}

TEST(LongSpace, IsSkipped) {
  EXPECT_EQ(parseJsonText("[" + std::string(kLong, ' ') + "1" + std::string(kLong, '\n') + "]"),
            Value(Array{1.0}));
}

TEST(ManyComments, AreSkipped) {
  std::string text = "[";
  for (std::size_t i = 0; i != kManyPieces; ++i) {
    text += "/*/*/ // /*\n";
  }
  EXPECT_EQ(parseJsonText(text + "1]", true), Value(Array{1.0}));
}

TEST(ManyCommentMarkers, InAnUnclosedCommentAreSkipped) {
  std::string text = "[";
  for (std::size_t i = 0; i != kManyPieces; ++i) {
    text += "/* ";
  }
  const JsonOutcome outcome = outcomeOf(text, true);
  EXPECT_EQ(std::make_tuple(outcome.code, outcome.offset),
            std::make_tuple(kEndOfText, text.size()));
}

TEST(AnErrorFarInside, HasItsPlaceAndAShortContext) {
  const std::string oneLine = "[\"" + std::string(kLong, 'x') + "\" 1]";
  const JsonOutcome inOneLine = outcomeOf(oneLine);
  EXPECT_EQ(std::make_tuple(inOneLine.code, inOneLine.line, inOneLine.column, inOneLine.context),
            std::make_tuple(kNoArraySeparator, 1u, kLong + 5, std::string(78, 'x') + "\" 1]"));
  const JsonOutcome afterLines = outcomeOf("[" + std::string(kLong, '\n') + "1 2]");
  EXPECT_EQ(
      std::make_tuple(afterLines.code, afterLines.line, afterLines.column, afterLines.context),
      std::make_tuple(kNoArraySeparator, kLong + 1, 3u, std::string("1 2]")));
}

}  // namespace
}  // namespace foundation::json
