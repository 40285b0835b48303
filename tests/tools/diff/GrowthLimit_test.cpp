#include "diff/GrowthLimit.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>

#include <gtest/gtest.h>

#include "diff/Growth.h"

namespace update_metadata_tool {
namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

struct AllowedGrowth {
  const char* name;
  const char* limit;
  std::int64_t before;
  std::int64_t allowed;
};

std::ostream& operator<<(std::ostream& out, const AllowedGrowth& row) {
  return out << row.name;
}

class GrowthLimits : public ::testing::TestWithParam<AllowedGrowth> {};

TEST_P(GrowthLimits, AllowSoManyBytes) {
  const std::optional<GrowthLimit> limit = GrowthLimit::parse(GetParam().limit);
  ASSERT_TRUE(limit.has_value());
  EXPECT_EQ(limit->allowedGrowth(GetParam().before), GetParam().allowed);
}

const AllowedGrowth kAllowedGrowths[] = {
    {"NoBytes", "0", 1000, 0},
    {"SomeBytes", "1048576", 1000, 1048576},
    {"MostBytes", "9223372036854775807", 0, kMax},
    {"LeadingZeros", "007", 1000, 7},
    {"NoShare", "0%", 1000, 0},
    {"AShare", "5%", 1000, 50},
    {"AShareRoundedDown", "5%", 1019, 50},
    {"AllOfIt", "100%", 1000, 1000},
    {"MoreThanAllOfIt", "250%", 1000, 2500},
    {"AShareWithAPoint", "2.5%", 1000, 25},
    {"TheSmallestShare", "0.0001%", 1'000'000, 1},
    {"TheSmallestShareOfLess", "0.0001%", 999'999, 0},
    {"TheLargestShare", "1000000%", 3, 30'000},
    {"AllOfTheMost", "100%", kMax, kMax},
    {"HalfOfTheMost", "50%", kMax, 4'611'686'018'427'387'903},
    {"MoreThanTheMost", "100.0001%", kMax, kMax},
    {"ShareOfNothing", "50%", 0, 0},
    {"ShareOfLessThanNothing", "50%", -1000, 0},
    {"ShareOfTheLeast", "50%", kMin, 0},
};
INSTANTIATE_TEST_SUITE_P(Limits, GrowthLimits, ::testing::ValuesIn(kAllowedGrowths),
                         [](const auto& row) { return row.param.name; });

TEST(GrowthLimit, RefusesEverythingElse) {
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

Sides<Totals> toFetch(const ByteSum& before, const ByteSum& after) {
  Sides<Totals> totals;
  totals.before.bytesToFetch = before;
  totals.after.bytesToFetch = after;
  return totals;
}

TEST(Growth, IsTooLargeOnlyBeyondTheLimit) {
  const GrowthLimit limit = GrowthLimit::parse("10%").value();
  EXPECT_FALSE(measureGrowth(toFetch(ByteSum(100), ByteSum(110)), limit)->isTooLarge());
  EXPECT_TRUE(measureGrowth(toFetch(ByteSum(100), ByteSum(111)), limit)->isTooLarge());
  EXPECT_FALSE(measureGrowth(toFetch(ByteSum(100), ByteSum(5)), limit)->isTooLarge());
  EXPECT_TRUE(measureGrowth(toFetch(ByteSum(0), ByteSum(1)), limit)->isTooLarge());
}

TEST(Growth, IsExactBeyondSixtyFourBits) {
  const ByteSum vast = ByteSum(kMax) + ByteSum(kMax);
  const GrowthLimit none = GrowthLimit::parse("0").value();
  EXPECT_TRUE(measureGrowth(toFetch(vast, vast + ByteSum(1)), none)->isTooLarge());
  EXPECT_FALSE(measureGrowth(toFetch(vast, vast), none)->isTooLarge());
  EXPECT_TRUE(measureGrowth(toFetch(ByteSum(kMin), ByteSum(kMax)), none)->isTooLarge());
  EXPECT_FALSE(measureGrowth(toFetch(vast, vast), GrowthLimit::parse("1%").value()).has_value())
      << "a share of what 64 bits do not hold";
}

TEST(Growth, MayBeNoShareOfWhatIsBelowZeroHoweverFar) {
  const GrowthLimit half = GrowthLimit::parse("50%").value();
  for (const ByteSum& before : {ByteSum(-1), ByteSum(kMin), ByteSum(kMin) + ByteSum(-1)}) {
    const auto same = measureGrowth(toFetch(before, before), half);
    ASSERT_TRUE(same.has_value());
    EXPECT_EQ(same->allowed, 0);
    EXPECT_FALSE(same->isTooLarge());
    EXPECT_TRUE(measureGrowth(toFetch(before, before + ByteSum(1)), half)->isTooLarge());
  }
}

}  // namespace
}  // namespace update_metadata_tool
