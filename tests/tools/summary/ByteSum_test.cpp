#include "summary/ByteSum.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <ostream>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "summary/SizeLimits.h"

namespace update_metadata_tool::summary {
namespace {

ByteSum sumOf(const std::vector<std::int64_t>& summands) {
  ByteSum sum;
  for (const std::int64_t summand : summands) {
    sum += ByteSum(summand);
  }
  return sum;
}

struct Sum {
  const char* name;
  std::vector<std::int64_t> summands;
  std::optional<std::int64_t> value;
};

std::ostream& operator<<(std::ostream& out, const Sum& row) {
  return out << row.name;
}

class ByteSums : public ::testing::TestWithParam<Sum> {};

TEST_P(ByteSums, HaveAValueIfTheyFitIntoSixtyFourBits) {
  EXPECT_EQ(sumOf(GetParam().summands).value(), GetParam().value);
}

TEST_P(ByteSums, DoNotDependOnTheOrder) {
  std::vector<std::int64_t> reversed = GetParam().summands;
  std::reverse(reversed.begin(), reversed.end());
  EXPECT_EQ(sumOf(reversed), sumOf(GetParam().summands));
}

TEST_P(ByteSums, AreUndoneBySubtraction) {
  ByteSum difference;
  for (const std::int64_t summand : GetParam().summands) {
    difference -= ByteSum(summand);
  }
  EXPECT_EQ(difference + sumOf(GetParam().summands), ByteSum());
}

const Sum kSums[] = {
    {"Nothing", {}, 0},
    {"One", {1}, 1},
    {"MinusOne", {-1}, -1},
    {"Largest", {kMax}, kMax},
    {"Smallest", {kMin}, kMin},
    {"JustTooLarge", {kMax, 1}, std::nullopt},
    {"JustTooSmall", {kMin, -1}, std::nullopt},
    {"LargestAndBack", {kMax, 1, -1}, kMax},
    {"SmallestAndBack", {kMin, -1, 1}, kMin},
    {"LargestAndSmallest", {kMax, kMin}, -1},
    {"TwiceTheLargest", {kMax, kMax}, std::nullopt},
    {"TwiceTheSmallest", {kMin, kMin}, std::nullopt},
    {"PastSixtyFourBits", {kMax, kMax, kMax, kMax}, std::nullopt},
    {"PastSixtyFourBitsAndBack", {kMax, kMax, kMax, kMin, kMin, kMin, 5}, 2},
    {"FarBelowAndBack", {kMin, kMin, kMin, kMax, kMax, kMax}, -3},
    {"OfBothSigns", {-5, 7, -4}, -2},
};
INSTANTIATE_TEST_SUITE_P(Sums, ByteSums, ::testing::ValuesIn(kSums),
                         [](const auto& row) { return row.param.name; });

TEST(ByteSum, OrdersLikeTheNumbers) {
  const std::vector<ByteSum> ascending = {
      sumOf({kMin, kMin}), sumOf({kMin, -1}), ByteSum(kMin),    ByteSum(-1),        ByteSum(0),
      ByteSum(1),          ByteSum(kMax),     sumOf({kMax, 1}), sumOf({kMax, kMax})};
  for (std::size_t i = 0; i < ascending.size(); ++i) {
    for (std::size_t j = 0; j < ascending.size(); ++j) {
      EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << ", " << j;
      EXPECT_EQ(ascending[i] == ascending[j], i == j) << i << ", " << j;
    }
  }
}

TEST(ByteSum, MayBeAddedToItself) {
  ByteSum sum(kMax);
  sum += sum;
  EXPECT_EQ(sum, sumOf({kMax, kMax}));
  sum += sum;
  EXPECT_EQ(sum, sumOf({kMax, kMax, kMax, kMax}));
}

TEST(ByteSum, HasASignEvenIfItDoesNotFit) {
  EXPECT_TRUE(sumOf({kMin, kMin}).isNegative());
  EXPECT_TRUE(ByteSum(-1).isNegative());
  EXPECT_FALSE(ByteSum(0).isNegative());
  EXPECT_FALSE(sumOf({kMax, kMax}).isNegative());
}

TEST(ByteSum, AgreesWithExactPlainArithmetic) {
  std::mt19937_64 random(2024);
  for (int round = 0; round < 1000; ++round) {
    std::int64_t plain = 0;
    ByteSum sum;
    for (int i = 0; i < 20; ++i) {
      const auto number = static_cast<std::int64_t>(random()) / 64;
      const bool isAdded = (random() & 1U) != 0;
      plain += isAdded ? number : -number;
      sum = isAdded ? sum + ByteSum(number) : sum - ByteSum(number);
    }
    EXPECT_EQ(sum.value(), plain);
  }
}

}  // namespace
}  // namespace update_metadata_tool::summary
