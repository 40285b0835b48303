#include "output/ReadableSize.h"

#include <cstdint>
#include <limits>
#include <ostream>

#include <gtest/gtest.h>

namespace update_metadata_tool::output {
namespace {

struct ShownSize {
  const char* name;
  std::int64_t bytes;
  const char* shown;
  const char* shownShort;
};

std::ostream& operator<<(std::ostream& out, const ShownSize& row) {
  return out << row.name;
}

class ReadableSize : public ::testing::TestWithParam<ShownSize> {};

TEST_P(ReadableSize, ShowsBytesAndTheLargestFittingUnit) {
  EXPECT_EQ(toReadableSize(GetParam().bytes), GetParam().shown);
}

TEST_P(ReadableSize, ShowsOnlyTheUnitInItsShortForm) {
  EXPECT_EQ(toShortSize(GetParam().bytes), GetParam().shownShort);
}

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

constexpr ShownSize kShownSizes[] = {
    {"Zero", 0, "0 bytes", "0 B"},
    {"One", 1, "1 byte", "1 B"},
    {"MinusOne", -1, "-1 byte", "-1 B"},
    {"LastWithoutUnit", 1023, "1023 bytes", "1023 B"},
    {"FirstWithUnit", 1024, "1024 bytes (1.0 KiB)", "1.0 KiB"},
    {"FirstNegativeWithUnit", -1024, "-1024 bytes (-1.0 KiB)", "-1.0 KiB"},
    {"OneDecimal", 1536, "1536 bytes (1.5 KiB)", "1.5 KiB"},
    {"LastKibibytes", 1048524, "1048524 bytes (1023.9 KiB)", "1023.9 KiB"},
    {"RoundedUpToTheNextUnit", 1048575, "1048575 bytes (1.0 MiB)", "1.0 MiB"},
    {"Gibibytes", 5368709120, "5368709120 bytes (5.0 GiB)", "5.0 GiB"},
    {"Largest", kMax, "9223372036854775807 bytes (8.0 EiB)", "8.0 EiB"},
    {"Smallest", kMin, "-9223372036854775808 bytes (-8.0 EiB)", "-8.0 EiB"},
};
INSTANTIATE_TEST_SUITE_P(Sizes, ReadableSize, ::testing::ValuesIn(kShownSizes),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::output
