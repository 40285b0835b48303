#include "json/scan/Whitespace.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/GuardedText.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using namespace std::string_literals;
using test_support::GuardedText;
using test_support::quoted;

// How many bytes are skipped in a text that ends where readable memory ends.
std::ptrdiff_t skippedOf(std::string_view text, bool allowComments) {
  GuardedText guarded;
  const std::string_view placed = guarded.place(text);
  return skipWhitespace(placed.data(), placed.data() + placed.size(), allowComments) -
         placed.data();
}

TEST(Whitespace, IsSixBytes) {
  for (int number = 0; number < 256; ++number) {
    const std::string text(3, static_cast<char>(static_cast<unsigned char>(number)));
    const bool isSpace = number == 0x20 || (number >= 0x09 && number <= 0x0D);
    EXPECT_EQ(skippedOf(text, false), isSpace ? 3 : 0) << "byte " << number;
    if (number != '/') {
      EXPECT_EQ(skippedOf(text, true), isSpace ? 3 : 0) << "byte " << number;
    }
  }
}

struct SpacedText {
  const char* name;
  std::string_view text;
  std::ptrdiff_t skipped;              ///< without comments
  std::ptrdiff_t skippedWithComments;  ///< if comments are allowed
};

void PrintTo(const SpacedText& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

class WhitespaceAndComments : public ::testing::TestWithParam<SpacedText> {};

TEST_P(WhitespaceAndComments, AreSkipped) {
  EXPECT_EQ(skippedOf(GetParam().text, false), GetParam().skipped);
  EXPECT_EQ(skippedOf(GetParam().text, true), GetParam().skippedWithComments);
}

constexpr SpacedText kTexts[] = {
    {"Nothing", "", 0, 0},
    {"NoSpace", "x ", 0, 0},
    {"Space", " \t\r\n\v\fx", 6, 6},
    {"SpaceOnly", "  ", 2, 2},
    {"NoBreakSpace", "\xC2\xA0", 0, 0},
    {"LineComment", "// a\nx", 0, 5},
    {"EmptyLineComment", "//\nx", 0, 3},
    {"LineCommentEndsAtALineFeedOnly", "// a\rb\nx", 0, 7},
    {"UnclosedLineComment", "// a", 0, 4},
    {"UnclosedEmptyLineComment", "//", 0, 2},
    {"BlockComment", "/* a */x", 0, 7},
    {"EmptyBlockComment", "/**/x", 0, 4},
    {"BlockCommentOfStars", "/***/x", 0, 5},
    {"BlockCommentOfLines", "/*\n\n*/x", 0, 6},
    {"BlockCommentWithOpeningInside", "/* /* */x", 0, 8},
    {"BlockCommentThatDoesNotCloseItself", "/*/x", 0, 4},
    {"BlockCommentClosedLater", "/*/x*/y", 0, 6},
    {"UnclosedBlockComment", "/* a *", 0, 6},
    {"UnclosedEmptyBlockComment", "/*", 0, 2},
    {"SlashOnly", "/", 0, 0},
    {"SlashAfterSpace", " /", 1, 1},
    {"SlashAndSpace", "/ /", 0, 0},
    {"SlashAndAnotherByte", "/x", 0, 0},
    {"StarOnly", "*/", 0, 0},
    {"Alternating", " // a\n /* b */ // c\n\tx", 1, 21},
    {"CommentsInARow", "/**//**///\n//\nx", 0, 14},
    {"SlashAfterAComment", "/**//", 0, 4},
    {"NulInAComment", {"/*\0*/x", 6}, 0, 5},
};
INSTANTIATE_TEST_SUITE_P(Texts, WhitespaceAndComments, ::testing::ValuesIn(kTexts),
                         [](const auto& row) { return row.param.name; });

using Skip = const char* (*)(const char*, const char*);

struct SpaceSkipper {
  const char* name;
  Skip skip;
};

void PrintTo(const SpaceSkipper& skipper, std::ostream* stream) {
  *stream << skipper.name;
}

constexpr SpaceSkipper kSpaceSkippers[] = {
    {"Plain", skipSpacesPlain},
#if defined(__SSE2__)
    {"Sse2", skipSpacesSse2},
#endif
    {"Quickest", skipSpaces},
};

class Spaces : public ::testing::TestWithParam<SpaceSkipper> {};
INSTANTIATE_TEST_SUITE_P(Variants, Spaces, ::testing::ValuesIn(kSpaceSkippers),
                         [](const auto& row) { return row.param.name; });

TEST_P(Spaces, AreSkippedUpToEveryOtherByteAtEveryPlaceOfEveryLength) {
  GuardedText guarded;
  constexpr std::size_t kMostBytes = 40;
  constexpr std::string_view kSpaces = " \t\n\v\f\r";
  for (std::size_t size = 0; size <= kMostBytes; ++size) {
    std::string spaces;
    for (std::size_t i = 0; i != size; ++i) {
      spaces.push_back(kSpaces[i % kSpaces.size()]);
    }
    const std::string_view all = guarded.place(spaces);
    ASSERT_EQ(GetParam().skip(all.data(), all.data() + size), all.data() + size) << size;
    for (std::size_t place = 0; place != size; ++place) {
      for (int number = 0; number < 256; ++number) {
        const auto other = static_cast<char>(static_cast<unsigned char>(number));
        if (kSpaces.find(other) != std::string_view::npos) {
          continue;
        }
        std::string text = spaces;
        text[place] = other;
        const std::string_view placed = guarded.place(text);
        ASSERT_EQ(GetParam().skip(placed.data(), placed.data() + size), placed.data() + place)
            << "byte " << number << " at " << place << " of " << size;
      }
    }
  }
}

}  // namespace
}  // namespace foundation::json
