#include "json/scan/Conversions.h"

#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <ostream>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "json/scan/ClassicStrtod.h"
#include "support/InLocale.h"
#include "support/Locales.h"

namespace foundation::json::detail {
namespace {

using namespace std::string_literals;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();

std::uint64_t bitsOf(double number) {
  std::uint64_t bits;
  std::memcpy(&bits, &number, sizeof bits);
  return bits;
}

std::string zeros(std::size_t count) {
  return std::string(count, '0');
}

// -------------------------------------------------------------------------------------------------
// get_utf8_string

TEST(Utf8String, IsACopyOfTheBytes) {
  const std::string text = "a\0\xC3\xA9\xFF"s;
  EXPECT_EQ(get_utf8_string(text.data(), text.data() + text.size()), text);
  EXPECT_EQ(get_utf8_string(text.data() + 1, text.data() + 3), "\0\xC3"s);
  EXPECT_EQ(get_utf8_string(text.data(), text.data()), "");
}

// -------------------------------------------------------------------------------------------------
// string_to_double

struct Number {
  const char* name;
  std::string text;
  double value;
};

void PrintTo(const Number& row, std::ostream* stream) {
  *stream << (row.text.size() <= 100 ? row.text : row.text.substr(0, 100) + "...");
}

class StringToDouble : public ::testing::TestWithParam<Number> {};

TEST_P(StringToDouble, RoundsToTheNearest) {
  EXPECT_EQ(bitsOf(string_to_double(GetParam().text)), bitsOf(GetParam().value))
      << string_to_double(GetParam().text);
  EXPECT_EQ(bitsOf(classicStrtod(GetParam().text)), bitsOf(GetParam().value));
}

TEST_P(StringToDouble, RoundsANegativeNumberAsItsOpposite) {
  EXPECT_EQ(bitsOf(string_to_double("-" + GetParam().text)), bitsOf(-GetParam().value));
  EXPECT_EQ(bitsOf(classicStrtod("-" + GetParam().text)), bitsOf(-GetParam().value));
}

const Number kOrdinaryNumbers[] = {
    {"Zero", "0", 0.0},
    {"ZeroFraction", "0.000", 0.0},
    {"ZeroExponent", "0e5", 0.0},
    {"Integer", "12345", 12345.0},
    {"LeadingZeros", "0012", 12.0},
    {"LeadingZerosAndFraction", "000.5", 0.5},
    {"Fraction", "0.1", 0.1},
    {"Exponent", "1e3", 1000.0},
    {"UpperCaseExponent", "1E3", 1000.0},
    {"PlusInTheExponent", "1e+3", 1000.0},
    {"MinusInTheExponent", "1e-3", 0.001},
    {"LeadingZerosInTheExponent", "1e0000000000000000000000000000003", 1000.0},
    {"LeadingZerosInANegativeExponent", "1e-0000000000000000000000000000003", 0.001},
    {"TieToEvenBelow", "9007199254740993", 9007199254740992.0},
    {"TieToEvenAbove", "9007199254740995", 9007199254740996.0},
    {"JustAboveATie", "9007199254740993.0000000000000000000000000001", 9007199254740994.0},
    {"JustBelowATie", "9007199254740994.9999999999999999999999999999", 9007199254740994.0},
    {"UnsignedMaximum", "18446744073709551615", 18446744073709551616.0},
    {"EightHundredDigits", std::string(800, '1') + "e-799", 1.1111111111111112},
    {"EightHundredFractionDigits", "0." + std::string(800, '3'), 0.33333333333333331},
    {"TieDecidedByTheLastOfManyDigits",
     "1.00000000000000011102230246251565404236316680908203125" + zeros(700) + "1",
     1.0000000000000002},
    {"TieOfManyDigits", "1.00000000000000011102230246251565404236316680908203125" + zeros(700),
     1.0},
    {"MillionDigits", "7" + zeros(999999) + "e-999999", 7.0},
    {"MillionLeadingZeros", zeros(1000000) + "7", 7.0},
    {"MillionFractionZeros", "0." + zeros(999999) + "7e1000000", 7.0},
};
INSTANTIATE_TEST_SUITE_P(Ordinary, StringToDouble, ::testing::ValuesIn(kOrdinaryNumbers),
                         [](const auto& row) { return row.param.name; });

const Number kNumbersAroundTheUpperLimit[] = {
    {"Largest", "1.7976931348623157e308", kLargest},
    {"RoundedToTheLargest", "1.7976931348623158e308", kLargest},
    {"RoundedToInfinity", "1.7976931348623159e308", kInfinity},
    {"JustBelowTheTieWithInfinity", "1.797693134862315807e308", kLargest},
    {"JustAboveTheTieWithInfinity", "1.797693134862315808e308", kInfinity},
    {"LargestWithManyDigits", "179769313486231570" + zeros(291), kLargest},
    {"TwoPowerOf1024",
     "179769313486231590772930519078902473361797697894230657273430081157732675"
     "805500963132708477322407536021120113879871393357658789768814416622492847"
     "430639474124377767893424865485276302219601246094119453082952085005768838"
     "150682342462881473913110540827237163350510684586298239947245938479716304"
     "835356329624224137216",
     kInfinity},
    {"TooLarge", "1e999", kInfinity},
    {"TooLargeByOne", "1e309", kInfinity},
    {"TooLargeWithPlus", "1e+999", kInfinity},
    {"TooLargeWithoutExponent", "1" + zeros(400), kInfinity},
    {"TooLargeWithFraction", "1" + zeros(400) + ".5", kInfinity},
    {"TooLargeWithLeadingZeros", zeros(500) + "1" + zeros(400), kInfinity},
    {"TooLargeAfterFractionZeros", "0." + zeros(10) + "1e400", kInfinity},
    {"TooLargeDespiteANegativeExponent", "1" + zeros(900) + "e-500", kInfinity},
    {"TooLargeWithAnExponentOfThirtyDigits", "1e999999999999999999999999999999", kInfinity},
    {"TooLargeWithAnExponentOfNineteenDigits", "1e9223372036854775807", kInfinity},
    {"TooLargeWithAnExponentJustBeyondSixtyFourBits", "1e18446744073709551617", kInfinity},
    {"TooLargeWithAnExponentOfAThousandDigits", "1e" + std::string(1000, '9'), kInfinity},
    {"TooLargeFractionWithAnExponentOfThirtyDigits",
     "0." + zeros(1000) + "1e123456789012345678901234567890", kInfinity},
    {"MillionNines", std::string(1000000, '9'), kInfinity},
    {"FractionZerosThatTheExponentUndoes", "0." + zeros(399) + "1e400", 1.0},
    {"FractionZerosThatTheExponentNearlyUndoes", "0." + zeros(399) + "1e708", 1e308},
    {"FractionZerosThatTheExponentMoreThanUndoes", "0." + zeros(399) + "1e709", kInfinity},
};
INSTANTIATE_TEST_SUITE_P(AroundTheUpperLimit, StringToDouble,
                         ::testing::ValuesIn(kNumbersAroundTheUpperLimit),
                         [](const auto& row) { return row.param.name; });

const Number kNumbersAroundTheLowerLimit[] = {
    {"SmallestNormal", "2.2250738585072014e-308", std::numeric_limits<double>::min()},
    {"LargestSubnormal", "2.2250738585072009e-308", 2.2250738585072009e-308},
    {"TieBelowTheSmallestNormal", "2.2250738585072011e-308", 2.2250738585072011e-308},
    {"SmallestSubnormal", "4.9e-324", kSmallest},
    {"SmallestSubnormalToManyDigits", "4.9406564584124654e-324", kSmallest},
    {"JustBelowHalfTheSmallest", "2.4703282292062327e-324", 0.0},
    {"JustAboveHalfTheSmallest", "2.4703282292062328e-324", kSmallest},
    {"TooSmall", "1e-999", 0.0},
    {"TooSmallByOne", "1e-325", 0.0},
    {"TooSmallByItsFraction", "0." + zeros(400) + "1", 0.0},
    {"TooSmallByItsFractionDespiteItsExponent", "0." + zeros(800) + "1e+400", 0.0},
    {"TooSmallDespiteManyDigits", "1" + zeros(300) + "e-700", 0.0},
    {"TooSmallWithLeadingZeros", zeros(500) + "1e-400", 0.0},
    {"TooSmallWithLeadingZerosAndFraction", zeros(500) + ".5e-400", 0.0},
    {"TooSmallWithAnExponentOfThirtyDigits", "1e-999999999999999999999999999999", 0.0},
    {"TooSmallWithAnExponentOfNineteenDigits", "1e-9223372036854775808", 0.0},
    {"TooSmallWithAnExponentJustBeyondSixtyFourBits", "1e-18446744073709551617", 0.0},
    {"TooSmallWithAnExponentOfAThousandDigits", "1e-" + std::string(1000, '9'), 0.0},
    {"ManyDigitsWithAnExponentOfThirtyDigits",
     std::string(1000, '9') + "e-123456789012345678901234567890", 0.0},
    {"MillionFractionZeros", "0." + zeros(1000000) + "1", 0.0},
    {"ZeroWithALargeExponent", "0e999", 0.0},
    {"ZeroWithASmallExponent", "0e-999", 0.0},
    {"ZeroWithAnExponentOfThirtyDigits", "0.00e999999999999999999999999999999", 0.0},
    {"DigitsThatTheExponentUndoes", "1" + zeros(400) + "e-400", 1.0},
};
INSTANTIATE_TEST_SUITE_P(AroundTheLowerLimit, StringToDouble,
                         ::testing::ValuesIn(kNumbersAroundTheLowerLimit),
                         [](const auto& row) { return row.param.name; });

TEST(StringToDoubleOfRandomNumbers, AgreesWithTheCLibrary) {
  std::mt19937_64 random(1);
  const auto digits = [&](std::size_t most) {
    std::string text(1 + random() % most, '0');
    for (char& digit : text) {
      digit = static_cast<char>('0' + random() % 10);
    }
    return text;
  };
  for (int left = 100000; left != 0; --left) {
    std::string text = (random() % 2 == 0 ? "-" : "") + digits(random() % 8 == 0 ? 60 : 18);
    if (random() % 2 == 0) {
      text += "." + digits(random() % 8 == 0 ? 60 : 18);
    }
    if (random() % 2 == 0) {
      text += (random() % 2 == 0 ? "e-" : "E") + digits(3);
    }
    ASSERT_EQ(bitsOf(string_to_double(text)), bitsOf(std::strtod(text.c_str(), nullptr))) << text;
  }
}

TEST(StringToDoubleOfEveryPowerOfTen, AgreesWithTheCLibrary) {
  for (int exponent = -400; exponent <= 400; ++exponent) {
    for (const char* mantissa : {"1", "9.999999999999999", "0.001", "123456789012345678901"}) {
      const std::string text = mantissa + ("e" + std::to_string(exponent));
      EXPECT_EQ(bitsOf(string_to_double(text)), bitsOf(std::strtod(text.c_str(), nullptr))) << text;
    }
  }
}

// Restores the locales that it finds.
class DecimalCommas : public ::testing::Test {
 protected:
  ~DecimalCommas() override {
    std::setlocale(LC_ALL, before_.c_str());
    std::locale::global(localeBefore_);
  }

 private:
  std::string before_ = std::setlocale(LC_ALL, nullptr);
  std::locale localeBefore_;
};

TEST_F(DecimalCommas, OfTheStreamsChangeNothing) {
  struct Commas : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::locale::global(std::locale(std::locale::classic(), new Commas));
  EXPECT_EQ(string_to_double("1234567.25"), 1234567.25);
  EXPECT_EQ(classicStrtod("1234567.25"), 1234567.25);
}

class ClassicStrtodInLocale : public test_support::InLocale {};

TEST_P(ClassicStrtodInLocale, IgnoresTheLocaleOfTheProgram) {
  EXPECT_EQ(classicStrtod("1234567.25"), 1234567.25);
}

INSTANTIATE_TEST_SUITE_P(Locales, ClassicStrtodInLocale,
                         ::testing::ValuesIn(test_support::localesOfTests()));

}  // namespace
}  // namespace foundation::json::detail
