#include "json/ParserException.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "json/ParseResult.h"

namespace foundation::json {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

using LocationInfo = ParserException::LocationInfo;

static_assert(std::is_base_of_v<std::runtime_error, ParserException>);
static_assert(std::is_nothrow_copy_constructible_v<ParserException>);
static_assert(std::is_nothrow_copy_assignable_v<ParserException>);
static_assert(
    std::is_same_v<decltype(ParserException::get_location_info(nullptr, nullptr, nullptr)),
                   std::tuple<std::uint64_t, std::uint64_t, std::string, std::uint64_t>>);

LocationInfo locationOf(std::string_view text, std::size_t offset) {
  return ParserException::get_location_info(text.data(), text.data() + offset,
                                            text.data() + text.size());
}

ParserException exceptionFor(std::string_view text, std::size_t offset, ParseResult code,
                             std::string_view description) {
  return ParserException(text.data(), text.data() + offset, text.data() + text.size(), code,
                         description);
}

// Walks the text byte by byte.
LocationInfo naiveLocationOf(std::string_view text, std::size_t offset) {
  std::uint64_t line = 1;
  std::uint64_t column = 1;
  for (std::size_t i = 0; i != offset; ++i) {
    if (text[i] == '\n') {
      ++line;
      column = 1;
    } else {
      ++column;
    }
  }
  const std::uint64_t caret = column - 1 < 80 ? column - 1 : 80;
  std::string context;
  for (std::size_t i = offset - caret; i < text.size() && i < offset + 80 && text[i] != '\n'; ++i) {
    context += text[i];
  }
  return {line, column, context, caret};
}

TEST(Location, IsTheStartOfAnEmptyText) {
  EXPECT_EQ(locationOf("", 0), LocationInfo(1, 1, "", 0));
  EXPECT_EQ(ParserException::get_location_info(nullptr, nullptr, nullptr),
            LocationInfo(1, 1, "", 0));
}

TEST(Location, CountsLinesByTheirLineFeedsOnly) {
  EXPECT_EQ(locationOf("a\nbc\nd", 3), LocationInfo(2, 2, "bc", 1));
  EXPECT_EQ(locationOf("a\r\rb", 3), LocationInfo(1, 4, "a\r\rb", 3));
  EXPECT_EQ(locationOf("a\r\nb", 3), LocationInfo(2, 1, "b", 0));
  EXPECT_EQ(locationOf("\n\n\n", 3), LocationInfo(4, 1, "", 0));
}

TEST(Location, OfALineFeedIsTheEndOfItsLine) {
  EXPECT_EQ(locationOf("ab\ncd", 2), LocationInfo(1, 3, "ab", 2));
  EXPECT_EQ(locationOf("\ncd", 0), LocationInfo(1, 1, "", 0));
}

TEST(Location, OfTheByteAfterALineFeedIsTheStartOfTheNextLine) {
  EXPECT_EQ(locationOf("ab\ncd", 3), LocationInfo(2, 1, "cd", 0));
  EXPECT_EQ(locationOf("ab\n", 3), LocationInfo(2, 1, "", 0));
}

TEST(Location, CountsColumnsInBytes) {
  EXPECT_EQ(locationOf("\t\xC3\xA9x", 3), LocationInfo(1, 4, "\t\xC3\xA9x", 3));
}

TEST(Location, KeepsANulInTheContext) {
  EXPECT_EQ(locationOf("a\0b\nc"sv, 2), LocationInfo(1, 3, "a\0b"s, 2));
}

TEST(Location, ShowsEightyBytesOnEachSide) {
  const std::string line = std::string(200, 'a') + std::string(200, 'b');
  EXPECT_EQ(locationOf(line, 200),
            LocationInfo(1, 201, std::string(80, 'a') + std::string(80, 'b'), 80));
}

TEST(Location, ShowsWhatThereIsWithinEightyBytes) {
  const std::string before(79, 'a');
  const std::string after(80, 'b');
  EXPECT_EQ(locationOf(before + after, 79), LocationInfo(1, 80, before + after, 79));
  EXPECT_EQ(locationOf("\n" + before + after, 80), LocationInfo(2, 80, before + after, 79));
  EXPECT_EQ(locationOf("x" + before + after + "y", 80),
            LocationInfo(1, 81, "x" + before + after, 80));
  EXPECT_EQ(locationOf("xx" + before + after, 81), LocationInfo(1, 82, "x" + before + after, 80));
  EXPECT_EQ(locationOf(before + "\n", 79), LocationInfo(1, 80, before, 79));
}

TEST(Location, AgreesWithANaiveSearchAtEveryPlaceOfManyTexts) {
  std::mt19937_64 random(1);
  for (int left = 200; left != 0; --left) {
    std::string text(random() % 500, 'x');
    const std::size_t lineFeedsOneIn = 1 + random() % 120;
    for (char& byte : text) {
      byte = random() % lineFeedsOneIn == 0 ? '\n' : static_cast<char>('a' + random() % 26);
    }
    for (std::size_t offset = 0; offset <= text.size(); ++offset) {
      ASSERT_EQ(locationOf(text, offset), naiveLocationOf(text, offset)) << offset << " in\n"
                                                                         << text;
    }
  }
}

// -------------------------------------------------------------------------------------------------
// Message

std::string messageFor(std::string_view text, std::size_t offset, ParseResult code,
                       std::string_view description) {
  return ParserException::format_message(text.data(), text.data() + offset,
                                         text.data() + text.size(), code, description);
}

TEST(ParserMessage, ShowsTheLineWithACaretUnderTheError) {
  EXPECT_EQ(messageFor("{\n  \"key\": 1,\n  \"key\" 1\n}", 22, 18, "No colon"),
            "JSON ParserException (E0018): No colon (Line 3, Column 9)\n"
            "\t  \"key\" 1\n"
            "\t        ^");
}

TEST(ParserMessage, HasAtLeastFourDigitsOfTheCode) {
  constexpr std::pair<ParseResult, const char*> kCodes[] = {{0, "E0000"},    {8, "E0008"},
                                                            {19, "E0019"},   {123, "E0123"},
                                                            {9999, "E9999"}, {12345, "E12345"}};
  for (const auto& [code, shown] : kCodes) {
    EXPECT_EQ(messageFor("x", 0, code, "D"),
              "JSON ParserException ("s + shown + "): D (Line 1, Column 1)\n\tx\n\t^");
  }
}

TEST(ParserMessage, AcceptsAnyDescription) {
  EXPECT_EQ(messageFor("x", 1, 8, ""),
            "JSON ParserException (E0008):  (Line 1, Column 2)\n\tx\n\t ^");
}

TEST(ParserMessage, KeepsTabsOfTheLine) {
  EXPECT_EQ(messageFor("\t\tx", 2, 8, "D"),
            "JSON ParserException (E0008): D (Line 1, Column 3)\n\t\t\tx\n\t  ^");
}

TEST(ParserMessage, KeepsANulOfTheLine) {
  EXPECT_EQ(messageFor("a\0b"sv, 2, 8, "D"),
            "JSON ParserException (E0008): D (Line 1, Column 3)\n\ta\0b\n\t  ^"s);
}

TEST(ParserMessage, HasAtMostEightyBlanksBeforeTheCaret) {
  EXPECT_EQ(messageFor(std::string(1000, 'a'), 900, 8, "D"),
            "JSON ParserException (E0008): D (Line 1, Column 901)\n\t" + std::string(160, 'a') +
                "\n\t" + std::string(80, ' ') + "^");
}

// -------------------------------------------------------------------------------------------------
// Exception

TEST(ParserException, KeepsCodePlaceAndContext) {
  const ParserException error = exceptionFor("ab\ncde", 4, 17, "Description");
  EXPECT_EQ(
      std::make_tuple(error.code(), error.offset(), error.line(), error.column(), error.context()),
      std::make_tuple(17, 4u, 2u, 2u, "cde"s));
  EXPECT_STREQ(error.what(),
               "JSON ParserException (E0017): Description (Line 2, Column 2)\n\tcde\n\t ^");
}

TEST(ParserException, OutlivesTheText) {
  auto text = std::make_unique<std::string>("some text that is too long to be stored in place");
  const ParserException error = exceptionFor(*text, 5, 8, "D");
  text.reset();
  EXPECT_EQ(error.context(), "some text that is too long to be stored in place");
}

TEST(ParserException, ShowsTheContextUpToANulButKeepsItWhole) {
  const ParserException error = exceptionFor("a\0b"sv, 2, 8, "D");
  EXPECT_STREQ(error.what(), "JSON ParserException (E0008): D (Line 1, Column 3)\n\ta");
  EXPECT_EQ(error.context(), "a\0b"s);
}

void expectTheSame(const ParserException& error, const ParserException& other) {
  EXPECT_EQ(std::make_tuple(error.code(), error.offset(), error.line(), error.column(),
                            error.context(), std::string(error.what())),
            std::make_tuple(other.code(), other.offset(), other.line(), other.column(),
                            other.context(), std::string(other.what())));
}

TEST(ParserException, IsWholeWhereverItIsCopiedOrMoved) {
  const ParserException error = exceptionFor("ab\ncde", 4, 17, "Description");
  ParserException copy = error;
  expectTheSame(copy, error);
  const ParserException moved = std::move(copy);
  expectTheSame(moved, error);
  expectTheSame(copy, error);  // NOLINT(bugprone-use-after-move): is still whole
  ParserException assigned = exceptionFor("x", 0, 8, "Other");
  assigned = error;
  expectTheSame(assigned, error);
  ParserException target = exceptionFor("x", 0, 8, "Other");
  target = std::move(assigned);
  expectTheSame(target, error);
  expectTheSame(assigned, error);  // NOLINT(bugprone-use-after-move): is still whole
}

TEST(ParserException, IsCaughtAsARuntimeError) {
  try {
    throw exceptionFor("x", 0, 8, "D");
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "JSON ParserException (E0008): D (Line 1, Column 1)\n\tx\n\t^");
  }
}

}  // namespace
}  // namespace foundation::json
