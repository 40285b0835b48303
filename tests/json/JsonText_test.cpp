#include "json/JsonText.h"

#include <cstddef>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/scan/Conversions.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using test_support::quoted;
using test_support::valueText;

struct AcceptedText {
  const char* name;
  std::string_view text;
  const char* value;
};

void PrintTo(const AcceptedText& row, std::ostream* stream) {
  *stream << quoted(row.text);
}

class JsonTextAccepts : public ::testing::TestWithParam<AcceptedText> {};

TEST_P(JsonTextAccepts, AText) {
  EXPECT_EQ(valueText(parseJsonText(std::string(GetParam().text))), GetParam().value);
}

constexpr AcceptedText kScalars[] = {
    {"True", "true", "true"},
    {"False", "false", "false"},
    {"Null", "null", "null"},
    {"EmptyString", R"("")", R"("")"},
    {"String", R"("text")", R"("text")"},
    {"StringOfAWholeWordOfTheScan", R"("0123456789abcdef")", R"("0123456789abcdef")"},
    {"StringThatLooksLikeSomethingElse", R"("{[1,true]}")", R"("{[1,true]}")"},
    {"CommentMarkersInAString", R"("/* // */")", R"("/* // */")"},
};
INSTANTIATE_TEST_SUITE_P(Scalar, JsonTextAccepts, ::testing::ValuesIn(kScalars),
                         [](const auto& row) { return row.param.name; });

constexpr AcceptedText kAcceptedNumbers[] = {
    {"Zero", "0", "0"},
    {"NegativeZero", "-0", "-0"},
    {"NegativeZeroWithFraction", "-0.0", "-0"},
    {"NegativeZeroWithExponent", "-0e5", "-0"},
    {"Integer", "42", "42"},
    {"NegativeInteger", "-7", "-7"},
    {"LeadingZeros", "0012", "12"},
    {"ZerosOnly", "000", "0"},
    {"NegativeLeadingZeros", "-0012.50", "-12.5"},
    {"ManyLeadingZeros", "00000000000000000000000000000007", "7"},
    {"Fraction", "1.5", "1.5"},
    {"Exponent", "15e2", "1500"},
    {"UpperCaseExponent", "15E2", "1500"},
    {"PlusInTheExponent", "15e+2", "1500"},
    {"MinusInTheExponent", "15e-2", "0.15"},
    {"LeadingZerosInTheExponent", "1e0002", "100"},
    {"ZeroExponent", "1e-0", "1"},
    {"FractionAndExponent", "0.25e+1", "2.5"},
    {"LargestExactInteger", "9007199254740992", "9007199254740992"},
    {"FirstRoundedInteger", "9007199254740993", "9007199254740992"},
    {"SecondRoundedInteger", "9007199254740995", "9007199254740996"},
    {"NineteenDigits", "9999999999999999999", "1e+19"},
    {"TwentyDigits", "12345678901234567890", "12345678901234567168"},
    {"Largest", "1.7976931348623157e308", "1.7976931348623157e+308"},
    {"SmallestNormal", "2.2250738585072014e-308", "2.2250738585072014e-308"},
    {"SmallestSubnormal", "4.9e-324", "5e-324"},
    {"TooLarge", "1e999", "inf"},
    {"TooLargeNegative", "-1e999", "-inf"},
    {"TooSmall", "1e-999", "0"},
    {"TooSmallNegative", "-1e-999", "-0"},
};
INSTANTIATE_TEST_SUITE_P(Number, JsonTextAccepts, ::testing::ValuesIn(kAcceptedNumbers),
                         [](const auto& row) { return row.param.name; });

constexpr AcceptedText kEscapes[] = {
    {"Quote", R"("\"")", R"("\x22")"},
    {"Slash", R"("\/")", R"("/")"},
    {"Backslash", R"("\\")", R"("\x5C")"},
    {"Backspace", R"("\b")", R"("\x08")"},
    {"FormFeed", R"("\f")", R"("\x0C")"},
    {"LineFeed", R"("\n")", R"("\x0A")"},
    {"CarriageReturn", R"("\r")", R"("\x0D")"},
    {"Tab", R"("\t")", R"("\x09")"},
    {"UnicodeOneByte", R"("\u0041")", R"("A")"},
    {"UnicodeNul", R"("a\u0000b")", R"("a\x00b")"},
    {"UnicodeTwoBytes", R"("\u00e9")", R"("\xC3\xA9")"},
    {"UnicodeThreeBytes", R"("\u20AC")", R"("\xE2\x82\xAC")"},
    {"UnicodeMixedCase", R"("\uAbCd")", R"("\xEA\xAF\x8D")"},
    {"UnicodePair", R"("\uD83D\uDE00")", R"("\xF0\x9F\x98\x80")"},
    {"UnicodePairInLowerCase", R"("\ud83d\ude00")", R"("\xF0\x9F\x98\x80")"},
    {"UnicodeFirstPair", R"("\uD800\uDC00")", R"("\xF0\x90\x80\x80")"},
    {"UnicodeLastPair", R"("\uDBFF\uDFFF")", R"("\xF4\x8F\xBF\xBF")"},
    {"LowSurrogateAlone", R"("\uDE00")", R"("\xEF\xBF\xBD")"},
    {"LowSurrogateBeforeAPair", R"("\uDE00\uD83D\uDE00")", R"("\xEF\xBF\xBD\xF0\x9F\x98\x80")"},
    {"HighSurrogateBeforeAnotherUnit", R"("\uD83D\u0041")", R"("\xEF\xBF\xBDA")"},
    {"TwoHighSurrogates", R"("\uD83D\uD83D")", R"("\xEF\xBF\xBD\xEF\xBF\xBD")"},
    {"PairAfterTwoHighSurrogates", R"("\uD83D\uD83D\uDE00")",
     R"("\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD")"},
    {"SeveralInOneString", R"("a\"b\\c\u0064e")", R"("a\x22b\x5Ccde")"},
    {"EscapeAfterALongStart", R"("0123456789abcdefghi\n0123456789abcdefghi")",
     R"("0123456789abcdefghi\x0A0123456789abcdefghi")"},
};
INSTANTIATE_TEST_SUITE_P(Escape, JsonTextAccepts, ::testing::ValuesIn(kEscapes),
                         [](const auto& row) { return row.param.name; });

constexpr AcceptedText kUncheckedBytes[] = {
    {"RawTab", "\"a\tb\"", R"("a\x09b")"},
    {"RawLineFeed", "\"a\nb\"", R"("a\x0Ab")"},
    {"RawNul", "\"a\0b\""sv, R"("a\x00b")"},
    {"Utf8", "\"\xC3\xA9\"", R"("\xC3\xA9")"},
    {"IllFormedUtf8", "\"\xFF\xC3\x80\x80\xED\xA0\x80\"", R"("\xFF\xC3\x80\x80\xED\xA0\x80")"},
    {"ByteOrderMark", "\"\xEF\xBB\xBF\"", R"("\xEF\xBB\xBF")"},
    {"NulInAKey", "{\"a\0b\":1,\"a\":2}"sv, R"({"a": 2, "a\x00b": 1})"},
};
INSTANTIATE_TEST_SUITE_P(UncheckedBytes, JsonTextAccepts, ::testing::ValuesIn(kUncheckedBytes),
                         [](const auto& row) { return row.param.name; });

constexpr AcceptedText kContainers[] = {
    {"EmptyArray", "[]", "[]"},
    {"EmptyArrayWithSpace", "[ \t\r\n\v\f]", "[]"},
    {"Array", "[1,2,3]", "[1, 2, 3]"},
    {"ArrayOfEveryKind", R"([null,true,false,-1.5,"s",[],{}])",
     R"([null, true, false, -1.5, "s", [], {}])"},
    {"ArrayWithSpace", "[ \t1\r\n,\v2\f,\n3 ]", "[1, 2, 3]"},
    {"ArraysOfArrays", "[[[]],[[],[1]]]", "[[[]], [[], [1]]]"},
    {"EmptyObject", "{}", "{}"},
    {"EmptyObjectWithSpace", "{ \t\r\n\v\f}", "{}"},
    {"Object", R"({"a":1,"b":[2]})", R"({"a": 1, "b": [2]})"},
    {"ObjectWithSpace", "{ \"a\"\t:\r1\n,\v\"b\"\f: 2\t}", R"({"a": 1, "b": 2})"},
    {"EmptyKey", R"({"":1})", R"({"": 1})"},
    {"ObjectInObjects", R"({"a":{"b":{"c":{}}}})", R"({"a": {"b": {"c": {}}}})"},
    {"KeysInByteOrder", R"({"b":1,"a":2,"B":3,"":4,"aa":5})",
     R"({"": 4, "B": 3, "a": 2, "aa": 5, "b": 1})"},
    {"HighBytesAfterAscii", "{\"\xC3\xA9\":1,\"\x7F\":2,\"z\":3,\"\xFF\":4}",
     R"({"z": 3, "\x7F": 2, "\xC3\xA9": 1, "\xFF": 4})"},
    {"EscapesInAKey", R"({"\u0062\n":1})", R"({"b\x0A": 1})"},
};
INSTANTIATE_TEST_SUITE_P(Container, JsonTextAccepts, ::testing::ValuesIn(kContainers),
                         [](const auto& row) { return row.param.name; });

constexpr AcceptedText kRepeatedKeys[] = {
    {"FirstOfTwo", R"({"a":1,"a":2})", R"({"a": 1})"},
    {"FirstOfThreeAmongOthers", R"({"b":0,"a":1,"a":[2],"c":3,"a":null})",
     R"({"a": 1, "b": 0, "c": 3})"},
    {"EscapedKeyAfterThePlainOne", R"({"a":1,"\u0061":2})", R"({"a": 1})"},
    {"EscapedKeyBeforeThePlainOne", R"({"\u0061":2,"a":1})", R"({"a": 2})"},
    {"EmptyKeys", R"({"":1,"":2})", R"({"": 1})"},
    {"InnerObjectsApart", R"({"a":{"a":1},"b":{"a":2}})", R"({"a": {"a": 1}, "b": {"a": 2}})"},
    {"ManyMembers",
     R"({"r":1,"q":1,"p":1,"o":1,"n":1,"m":1,"l":1,"k":1,"j":1,"i":1,"h":1,"g":1,"f":1,"e":1,)"
     R"("d":1,"c":1,"b":1,"a":1,"r":2,"k":2,"a":2})",
     R"({"a": 1, "b": 1, "c": 1, "d": 1, "e": 1, "f": 1, "g": 1, "h": 1, "i": 1, "j": 1, "k": 1, )"
     R"("l": 1, "m": 1, "n": 1, "o": 1, "p": 1, "q": 1, "r": 1})"},
};
INSTANTIATE_TEST_SUITE_P(RepeatedKeysKeeping, JsonTextAccepts, ::testing::ValuesIn(kRepeatedKeys),
                         [](const auto& row) { return row.param.name; });

class JsonTextWithComments : public ::testing::TestWithParam<AcceptedText> {};

TEST_P(JsonTextWithComments, AcceptsAText) {
  EXPECT_EQ(valueText(parseJsonText(std::string(GetParam().text), true)), GetParam().value);
}

constexpr AcceptedText kAcceptedWithComments[] = {
    {"InAnEmptyArray", "[/* nothing */]", "[]"},
    {"InAnEmptyObject", "{// nothing\n}", "{}"},
    {"AroundElements", "[/*a*/1/*b*/,/*c*/2/*d*/]", "[1, 2]"},
    {"AroundAMember", "{/*a*/\"k\"/*b*/:/*c*/1/*d*/}", R"({"k": 1})"},
    {"AroundMembers", "{\"k\":1//\n,//\n\"l\":2}", R"({"k": 1, "l": 2})"},
    {"AlternatingWithSpace", "[ // a\n /* b */ \t// c\n 1]", "[1]"},
    {"StarsInAComment", "[/***/1/* ** * / */]", "[1]"},
    {"CommentThatDoesNotCloseItself", "[/*/1,*/2]", "[2]"},
    {"LineCommentInABlockComment", "[/* // */1]", "[1]"},
    {"BlockCommentInALineComment", "[// /*\n1]", "[1]"},
    {"MarkersInAString", R"(["// no", "/* no */"])", R"(["// no", "/* no */"])"},
    {"AroundIntegers", "{\"qztype\":\"int8\",\"qzdata\":/**/[/**/1/**/,//\n2/**/]/**/}",
     R"({"qzdata": [int64(1), int64(2)], "qztype": "int8"})"},
};
INSTANTIATE_TEST_SUITE_P(Comments, JsonTextWithComments, ::testing::ValuesIn(kAcceptedWithComments),
                         [](const auto& row) { return row.param.name; });

TEST(JsonText, IsReadTheSameWayWhereCommentsAreAllowedButThereAreNone) {
  for (const AcceptedText& row : kContainers) {
    EXPECT_EQ(valueText(parseJsonText(std::string(row.text), true)), row.value);
  }
}

TEST(JsonText, StaysUnchangedUnlessItIsMoved) {
  const std::string text = R"({"key": ["a string that is too long to be stored in place"]})";
  const std::string copy = text;
  const Value value = parseJsonText(text);
  EXPECT_EQ(text, copy);
  EXPECT_EQ(parseJsonText(std::string(text)), value);
}

TEST(JsonStrings, MayContainEveryByteExceptTheQuoteAndTheBackslash) {
  for (int number = 0; number < 256; ++number) {
    const char byte = static_cast<char>(static_cast<unsigned char>(number));
    if (byte != '"' && byte != '\\') {
      const std::string content = "a"s + byte + "b";
      EXPECT_EQ(parseJsonText('"' + content + '"').as<std::string>(), content);
      EXPECT_EQ(parseJsonText("\"\\n" + content + '"').as<std::string>(), '\n' + content);
    }
  }
}

TEST(JsonStrings, MayHaveEveryLength) {
  for (std::size_t length = 0; length < 100; ++length) {
    const std::string content(length, 'x');
    EXPECT_EQ(parseJsonText('"' + content + '"').as<std::string>(), content);
    EXPECT_EQ(parseJsonText('"' + content + "\\t\"").as<std::string>(), content + '\t');
    EXPECT_EQ(parseJsonText("\"\\t" + content + '"').as<std::string>(), '\t' + content);
  }
}

TEST(UnicodeEscapes, StandForEveryUnitInEitherCase) {
  for (const std::string_view hexadecimal : {"0123456789abcdef"sv, "0123456789ABCDEF"sv}) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
      if (unit >= 0xD800 && unit <= 0xDBFF) {
        continue;
      }
      std::string text = "\"\\u";
      for (const unsigned shift : {12u, 8u, 4u, 0u}) {
        text += hexadecimal[(unit >> shift) & 0xF];
      }
      text += '"';
      const std::u16string units(1, static_cast<char16_t>(unit));
      ASSERT_EQ(parseJsonText(text).as<std::string>(), detail::u16_to_u8(units)) << text;
    }
  }
}

TEST(JsonWhitespace, IsSixBytesOnly) {
  for (int number = 0; number < 256; ++number) {
    const char byte = static_cast<char>(static_cast<unsigned char>(number));
    const bool isSpace = number == 0x20 || (number >= 0x09 && number <= 0x0D);
    bool accepted = true;
    try {
      parseJsonText("[1"s + byte + "]");
    } catch (const std::runtime_error&) {
      accepted = false;
    }
    EXPECT_EQ(accepted, isSpace || (byte >= '0' && byte <= '9')) << "byte " << number;
  }
}

}  // namespace
}  // namespace foundation::json
