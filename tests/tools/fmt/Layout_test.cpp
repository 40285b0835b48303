#include "fmt/Layout.h"

#include <cstddef>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "diagnosis/source/SourceTree.h"
#include "support/Depth.h"
#include "support/RandomJsonText.h"

namespace update_metadata_tool::fmt {
namespace {

constexpr Layout kCompactLayout{true, 0};
constexpr Layout kTwoBlanksLayout{false, 2};
constexpr Layout kNoBlanks{false, 0};
constexpr Layout kEightBlanks{false, 8};

std::string laidOut(const std::string& text, const Layout& layout) {
  return layOut(source::SourceTree(text), layout);
}

struct LaidOutText {
  const char* name;
  const char* text;
  Layout layout;
  const char* expected;
};

std::ostream& operator<<(std::ostream& out, const LaidOutText& row) {
  return out << row.name;
}

class Layouts : public ::testing::TestWithParam<LaidOutText> {};

TEST_P(Layouts, ChangeOnlyWhiteSpace) {
  EXPECT_EQ(laidOut(GetParam().text, GetParam().layout), GetParam().expected);
}

TEST_P(Layouts, ChangeNothingTheSecondTime) {
  EXPECT_EQ(laidOut(GetParam().expected, GetParam().layout), GetParam().expected);
}

const char* const kNested = "{\"a\":[1,{\"b\" : null}\t],\n\"c\":{} , \"d\":[ ]}";

const LaidOutText kLaidOutTexts[] = {
    {"Scalar", "1", kTwoBlanksLayout, "1"},
    {"EmptyObject", "{ \n }", kTwoBlanksLayout, "{}"},
    {"EmptyArray", "[\t]", kNoBlanks, "[]"},
    {"OneElement", "[1]", kTwoBlanksLayout, "[\n  1\n]"},
    {"Nested", kNested, kTwoBlanksLayout,
     "{\n"
     "  \"a\": [\n"
     "    1,\n"
     "    {\n"
     "      \"b\": null\n"
     "    }\n"
     "  ],\n"
     "  \"c\": {},\n"
     "  \"d\": []\n"
     "}"},
    {"NestedWithoutIndent", kNested, kNoBlanks,
     "{\n\"a\": [\n1,\n{\n\"b\": null\n}\n],\n\"c\": {},\n\"d\": []\n}"},
    {"NestedWithEightBlanks", kNested, kEightBlanks,
     "{\n"
     "        \"a\": [\n"
     "                1,\n"
     "                {\n"
     "                        \"b\": null\n"
     "                }\n"
     "        ],\n"
     "        \"c\": {},\n"
     "        \"d\": []\n"
     "}"},
    {"NestedCompact", kNested, kCompactLayout, R"({"a":[1,{"b":null}],"c":{},"d":[]})"},
    {"Spellings", R"([ 007 , -0, 1E+3,0.10,1e999, true,false ])", kCompactLayout,
     R"([007,-0,1E+3,0.10,1e999,true,false])"},
    {"Escapes", R"(["\u0041\/\ud83d\ude00", "\u00e9", "\"] , "])", kCompactLayout,
     R"(["\u0041\/\ud83d\ude00","\u00e9","\"] , "])"},
    {"RawBytes", "[\"\xFF\t\n \v\", \"\xC3\xA9\"]", kCompactLayout,
     "[\"\xFF\t\n \v\",\"\xC3\xA9\"]"},
    {"RepeatedKeys", R"({"a":1,"\u0061":2,"a":3})", kTwoBlanksLayout,
     "{\n  \"a\": 1,\n  \"\\u0061\": 2,\n  \"a\": 3\n}"},
    {"TypedPayloads", R"([{"qztype":"int8","qzdata":[1 ,-2]},{"qzdata":[ 3],"qztype":"uint8"}])",
     kCompactLayout, R"([{"qztype":"int8","qzdata":[1,-2]},{"qzdata":[3],"qztype":"uint8"}])"},
    {"EveryWhiteSpace", "[\t1\n,\v2\f,\r3 ]", kCompactLayout, "[1,2,3]"},
    {"SixteenLevels", "[[[[[[[[[[[[[[[[1,{}]]]]]]]]]]]]]]]]", kNoBlanks,
     "[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n1,\n{}\n"
     "]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]"},
    {"SeventeenLevels", "[[[[[[[[[[[[[[[[[1,{\"a\":[2, 3],\"b\":[]}],4]]]]]]]]]]]]]]]]", kNoBlanks,
     "[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[\n[1, {\"a\": [2, 3], \"b\": []}],\n4\n"
     "]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]\n]"},
};
INSTANTIATE_TEST_SUITE_P(Texts, Layouts, ::testing::ValuesIn(kLaidOutTexts),
                         [](const auto& row) { return row.param.name; });

TEST(LayoutOfAnyText, DependsOnlyOnKeysAndValues) {
  test_support::RandomJsonText texts(20);
  std::size_t laidOutTexts = 0;
  for (int count = 0; count < 20000; ++count) {
    const std::string text = texts.next();
    if (source::SourceTree(text).fault()) {
      continue;
    }
    ++laidOutTexts;
    const std::string spread = laidOut(text, kTwoBlanksLayout);
    const std::string compact = laidOut(text, kCompactLayout);
    ASSERT_EQ(laidOut(spread, kTwoBlanksLayout), spread) << text;
    ASSERT_EQ(laidOut(compact, kTwoBlanksLayout), spread) << text;
    ASSERT_EQ(laidOut(spread, kCompactLayout), compact) << text;
  }
  EXPECT_GT(laidOutTexts, 3000U);
}

TEST(LayoutOfADeepText, NeedsNoStackAndGrowsByABoundedFactor) {
  constexpr std::size_t kDepth = 1000000;
  std::string compact;
  for (std::size_t level = 0; level < kDepth; ++level) {
    compact += level % 2 == 0 ? "[" : "{\"a\":";
  }
  compact += "null";
  for (std::size_t level = kDepth; level > 0; --level) {
    compact += level % 2 == 1 ? "]" : "}";
  }
  test_support::runWithSmallStack([&compact] {
    const std::string spread = laidOut(compact, kEightBlanks);
    // A blank after each colon, and sixteen spread levels.
    EXPECT_LT(spread.size(), compact.size() + kDepth / 2 + 16 * 2 * (1 + 16 * 8));
    EXPECT_TRUE(laidOut(spread, kCompactLayout) == compact);
  });
}

TEST(LayoutOfALongText, GrowsInProportionToIt) {
  constexpr std::size_t kElements = 1000000;
  std::string compact = "[0";
  for (std::size_t count = 1; count < kElements; ++count) {
    compact += ",0";
  }
  compact += ']';
  std::string spread = laidOut(compact, kTwoBlanksLayout);
  EXPECT_EQ(spread.size(), 1 + kElements * 5 + 1);
  EXPECT_TRUE(laidOut(spread, kCompactLayout) == compact);
}

}  // namespace
}  // namespace update_metadata_tool::fmt
