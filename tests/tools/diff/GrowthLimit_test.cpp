#include "diff/GrowthLimit.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>

#include <gtest/gtest.h>

namespace update_metadata_tool::diff {
namespace {

using summary::ByteSum;

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

// More than fits into 64 bits.
const ByteSum kVast = ByteSum(kMax) + ByteSum(kMax);

ByteSum tenThousandTimes(const ByteSum& sum) {
  ByteSum product;
  for (int i = 0; i < 10'000; ++i) {
    product += sum;
  }
  return product;
}

struct AllowedGrowth {
  const char* name;
  const char* limit;
  ByteSum before;
  ByteSum allowed;
};

std::ostream& operator<<(std::ostream& out, const AllowedGrowth& row) {
  return out << row.name;
}

class GrowthLimits : public ::testing::TestWithParam<AllowedGrowth> {};

TEST_P(GrowthLimits, AllowThisManyBytes) {
  const std::optional<GrowthLimit> limit = GrowthLimit::parse(GetParam().limit);
  ASSERT_TRUE(limit.has_value());
  EXPECT_EQ(limit->measure(GetParam().before, ByteSum()).allowed, GetParam().allowed);
}

const AllowedGrowth kAllowedGrowths[] = {
    {"NoBytes", "0", ByteSum(1000), ByteSum(0)},
    {"SomeBytes", "1048576", ByteSum(1000), ByteSum(1048576)},
    {"MostBytes", "9223372036854775807", ByteSum(0), ByteSum(kMax)},
    {"LeadingZeros", "007", ByteSum(1000), ByteSum(7)},
    {"NoShare", "0%", ByteSum(1000), ByteSum(0)},
    {"AShare", "5%", ByteSum(1000), ByteSum(50)},
    {"AShareRoundedDown", "5%", ByteSum(1019), ByteSum(50)},
    {"AllOfIt", "100%", ByteSum(1000), ByteSum(1000)},
    {"MoreThanAllOfIt", "250%", ByteSum(1000), ByteSum(2500)},
    {"AShareWithAPoint", "2.5%", ByteSum(1000), ByteSum(25)},
    {"TheSmallestShare", "0.0001%", ByteSum(1'000'000), ByteSum(1)},
    {"TheSmallestShareOfLess", "0.0001%", ByteSum(999'999), ByteSum(0)},
    {"TheLargestShare", "1000000%", ByteSum(3), ByteSum(30'000)},
    {"AllOfTheMost", "100%", ByteSum(kMax), ByteSum(kMax)},
    {"HalfOfTheMost", "50%", ByteSum(kMax), ByteSum(4'611'686'018'427'387'903)},
    {"MoreThanTheMost", "100.0001%", ByteSum(kMax), ByteSum(kMax) + ByteSum(9'223'372'036'854)},
    {"AllOfMoreThanTheMost", "100%", kVast, kVast},
    {"HalfOfMoreThanTheMost", "50%", kVast, ByteSum(kMax)},
    {"ShareOfMoreThanTheMost", "0.0001%", kVast, ByteSum(18'446'744'073'709)},
    {"TheLargestShareOfMoreThanTheMost", "1000000%", kVast, tenThousandTimes(kVast)},
    {"ShareOfNothing", "50%", ByteSum(0), ByteSum(0)},
    {"ShareOfLessThanNothing", "50%", ByteSum(-1000), ByteSum(0)},
    {"ShareOfTheLeast", "50%", ByteSum(kMin), ByteSum(0)},
    {"ShareOfLessThanTheLeast", "50%", ByteSum(kMin) + ByteSum(-1), ByteSum(0)},
};
INSTANTIATE_TEST_SUITE_P(Limits, GrowthLimits, ::testing::ValuesIn(kAllowedGrowths),
                         [](const auto& row) { return row.param.name; });

TEST(GrowthLimit, RejectsAnythingElse) {
  for (const char* text : {"",
                           "%",
                           ".%",
                           ".5%",
                           "5.%",
                           "2.50000%",
                           "1.2.3%",
                           "-1",
                           "+1",
                           "-1%",
                           "1e3",
                           "0x10",
                           " 1",
                           "1 ",
                           "5 %",
                           "5%%",
                           "%5",
                           "1K",
                           "1.5",
                           "9223372036854775808",
                           "1000000.0001%",
                           "99999999999999999999%",
                           "1,5%",
                           "five"}) {
    EXPECT_FALSE(GrowthLimit::parse(text).has_value()) << text;
  }
}

TEST(Growth, IsTooLargeOnlyBeyondTheLimit) {
  const GrowthLimit limit = GrowthLimit::parse("10%").value();
  EXPECT_FALSE(limit.measure(ByteSum(100), ByteSum(110)).isTooLarge());
  EXPECT_TRUE(limit.measure(ByteSum(100), ByteSum(111)).isTooLarge());
  EXPECT_FALSE(limit.measure(ByteSum(100), ByteSum(5)).isTooLarge());
  EXPECT_TRUE(limit.measure(ByteSum(0), ByteSum(1)).isTooLarge());
}

TEST(Growth, IsExactBeyondSixtyFourBits) {
  const GrowthLimit none = GrowthLimit::parse("0").value();
  EXPECT_TRUE(none.measure(kVast, kVast + ByteSum(1)).isTooLarge());
  EXPECT_FALSE(none.measure(kVast, kVast).isTooLarge());
  EXPECT_TRUE(none.measure(ByteSum(kMin), ByteSum(kMax)).isTooLarge());
  const GrowthLimit half = GrowthLimit::parse("50%").value();
  const ByteSum allowed = kVast + ByteSum(kMax);
  EXPECT_FALSE(half.measure(kVast, ByteSum(1)).isTooLarge());
  EXPECT_FALSE(half.measure(kVast, allowed).isTooLarge());
  EXPECT_TRUE(half.measure(kVast, allowed + ByteSum(1)).isTooLarge());
}

TEST(Growth, IsNotAllowedByAPercentageOfANegativeNumber) {
  const GrowthLimit half = GrowthLimit::parse("50%").value();
  for (const ByteSum& before : {ByteSum(-1), ByteSum(kMin), ByteSum(kMin) + ByteSum(-1)}) {
    EXPECT_FALSE(half.measure(before, before).isTooLarge());
    EXPECT_TRUE(half.measure(before, before + ByteSum(1)).isTooLarge());
  }
}

}  // namespace
}  // namespace update_metadata_tool::diff
