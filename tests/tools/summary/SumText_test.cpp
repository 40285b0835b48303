#include "summary/SumText.h"

#include <ostream>

#include <gtest/gtest.h>

#include "summary/SizeLimits.h"

namespace update_metadata_tool::summary {
namespace {

struct FormattedSum {
  const char* name;
  ByteSum sum;
  const char* plain;
  const char* brief;
  const char* readable;
};

std::ostream& operator<<(std::ostream& out, const FormattedSum& row) {
  return out << row.name;
}

class FormattedSums : public ::testing::TestWithParam<FormattedSum> {};

TEST_P(FormattedSums, ShowTheBoundThatTheyExceed) {
  EXPECT_EQ(toPlainNumber(GetParam().sum), GetParam().plain);
  EXPECT_EQ(toShortSize(GetParam().sum), GetParam().brief);
  EXPECT_EQ(toReadableSize(GetParam().sum), GetParam().readable);
}

const FormattedSum kFormattedSums[] = {
    {"Zero", ByteSum(), "0", "0 B", "0 bytes"},
    {"One", ByteSum(1), "1", "1 B", "1 byte"},
    {"Negative", ByteSum(-1536), "-1536", "-1.5 KiB", "-1536 bytes (-1.5 KiB)"},
    {"Largest", ByteSum(kMax), "9223372036854775807", "8.0 EiB",
     "9223372036854775807 bytes (8.0 EiB)"},
    {"TooLarge", ByteSum(kMax) + ByteSum(1), ">9223372036854775807", ">8.0 EiB",
     "more than 9223372036854775807 bytes (8.0 EiB)"},
    {"TooSmall", ByteSum(kMin) - ByteSum(1), "<-9223372036854775808", "<-8.0 EiB",
     "less than -9223372036854775808 bytes (-8.0 EiB)"},
};
INSTANTIATE_TEST_SUITE_P(Sums, FormattedSums, ::testing::ValuesIn(kFormattedSums),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::summary
