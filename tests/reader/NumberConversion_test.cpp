#include "reader/NumberConversion.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>

#include <gtest/gtest.h>

#include "json/JsonText.h"

namespace install::update_metadata_parser {
namespace {

constexpr std::int64_t kMinimum64 = std::numeric_limits<std::int64_t>::min();
constexpr int kMinimum32 = std::numeric_limits<int>::min();

template <class Integer>
struct Conversion {
  const char* name;
  const char* number;  ///< as a document writes it
  Integer result;
};

template <class Integer>
void PrintTo(const Conversion<Integer>& conversion, std::ostream* stream) {
  *stream << conversion.name;
}

double numberIn(const char* text) {
  return foundation::json::parseJsonText(text).as<double>();
}

const Conversion<std::int64_t> kByteCounts[] = {
    {"Zero", "0", 0},
    {"NegativeZero", "-0", 0},
    {"LosesItsFraction", "12.9", 12},
    {"LosesItsFractionTowardZero", "-3.5", -3},
    {"LessThanOne", "0.999999", 0},
    {"BetweenMinusOneAndZero", "-0.999999", 0},
    {"TheLeastPositive", "4.9406564584124654e-324", 0},
    {"KeepsANegativeNumber", "-1", -1},
    {"AboveThe32BitRange", "4294967296.5", 4294967296},
    {"BelowThe32BitRange", "-4294967296.5", -4294967296},
    {"TheLargestWithAHalf", "4503599627370495.5", 4503599627370495},
    {"TheFirstThatADoubleRounds", "9007199254740993", 9007199254740992},
    {"TheLargestInRange", "9223372036854774784", 9223372036854774784},
    {"TheLargestIntegerRoundsOutOfRange", "9223372036854775807", kMinimum64},
    {"TwoTo63", "9223372036854775808", kMinimum64},
    {"TheNextAboveTwoTo63", "9223372036854777856", kMinimum64},
    {"MinusTwoTo63", "-9223372036854775808", kMinimum64},
    {"TheNextAboveMinusTwoTo63", "-9223372036854774784", -9223372036854774784},
    {"TheNextBelowMinusTwoTo63", "-9223372036854777856", kMinimum64},
    {"FarAbove", "1e30", kMinimum64},
    {"FarBelow", "-1e30", kMinimum64},
    {"TheLargestDouble", "1.7976931348623157e308", kMinimum64},
    {"Infinity", "1e999", kMinimum64},
    {"MinusInfinity", "-1e999", kMinimum64},
    {"TooSmallForADouble", "1e-999", 0},
};

class ByteCount : public ::testing::TestWithParam<Conversion<std::int64_t>> {};

TEST_P(ByteCount, IsTruncatedTowardZeroAndIsTheMinimumOutOfRange) {
  EXPECT_EQ(toByteCount(numberIn(GetParam().number)), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Edges, ByteCount, ::testing::ValuesIn(kByteCounts),
                         [](const auto& row) { return row.param.name; });

TEST(ByteCount, OfNotANumberIsTheMinimum) {
  EXPECT_EQ(toByteCount(std::nan("")), kMinimum64);
  EXPECT_EQ(toByteCount(-std::nan("")), kMinimum64);
}

const Conversion<int> kUpdateLevels[] = {
    {"Zero", "0", 0},
    {"LosesItsFraction", "7.9", 7},
    {"LosesItsFractionTowardZero", "-1.5", -1},
    {"BetweenMinusOneAndZero", "-0.5", 0},
    {"LessThanOne", "0.5", 0},
    {"TheLargest", "2147483647", 2147483647},
    {"TheLargestWithAFraction", "2147483647.9999995", 2147483647},
    {"TheFirstAbove", "2147483648", kMinimum32},
    {"TheLeast", "-2147483648", kMinimum32},
    {"TheLeastButOne", "-2147483647.9999995", -2147483647},
    {"TheLeastWithAFraction", "-2147483648.9999995", kMinimum32},
    {"TheFirstBelow", "-2147483649", kMinimum32},
    {"TwoTo32", "4294967296", kMinimum32},
    {"TwoTo32AndOne", "4294967297", kMinimum32},
    {"TwoTo63", "9223372036854775808", kMinimum32},
    {"FarAbove", "1e30", kMinimum32},
    {"FarBelow", "-1e30", kMinimum32},
    {"Infinity", "1e999", kMinimum32},
    {"MinusInfinity", "-1e999", kMinimum32},
};

class UpdateLevel : public ::testing::TestWithParam<Conversion<int>> {};

TEST_P(UpdateLevel, IsTruncatedTowardZeroAndIsTheMinimumOutOfRange) {
  EXPECT_EQ(toIntUpdateLevel(numberIn(GetParam().number)), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Edges, UpdateLevel, ::testing::ValuesIn(kUpdateLevels),
                         [](const auto& row) { return row.param.name; });

TEST(UpdateLevel, OfNotANumberIsTheMinimum) {
  EXPECT_EQ(toIntUpdateLevel(std::nan("")), kMinimum32);
}

}  // namespace
}  // namespace install::update_metadata_parser
