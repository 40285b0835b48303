#include "mf/zero/text/WideNumber.h"

#include <cstdint>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace mf::zero {
namespace {

constexpr std::uint64_t kMaximum = std::numeric_limits<std::uint64_t>::max();

std::pair<std::uint64_t, std::uint64_t> halvesOf(const PlainWideNumber& number) {
  return {number.low, number.high};
}

struct Product {
  const char* name;
  std::uint64_t left;
  std::uint64_t right;
  std::uint64_t low;
  std::uint64_t high;
};

void PrintTo(const Product& product, std::ostream* stream) {
  *stream << product.name;
}

class ProductOf : public ::testing::TestWithParam<Product> {};

TEST_P(ProductOf, HasAllBits) {
  const std::pair<std::uint64_t, std::uint64_t> expected(GetParam().low, GetParam().high);
  PlainWideNumber plain;
  plain.addProduct(GetParam().left, GetParam().right);
  EXPECT_EQ(halvesOf(plain), expected);
  WideNumber wide;
  wide.addProduct(GetParam().left, GetParam().right);
  EXPECT_EQ(halvesOf(wide.halves()), expected);
}

constexpr Product kProducts[] = {
    {"Zero", 0, kMaximum, 0, 0},
    {"One", 1, kMaximum, kMaximum, 0},
    {"LowHalves", 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFE00000001, 0},
    {"HighHalves", 0x100000000, 0x100000000, 0, 1},
    {"TheLargest", kMaximum, kMaximum, 1, kMaximum - 1},
    {"CarriesInTheMiddle", 0xFFFFFFFF00000001, 0x00000001FFFFFFFF, 0x2FFFFFFFF, 0x1FFFFFFFD},
};

INSTANTIATE_TEST_SUITE_P(Numbers, ProductOf, ::testing::ValuesIn(kProducts),
                         [](const auto& row) { return row.param.name; });

TEST(WideNumber, SumsAsThePlainFormDoes) {
  std::mt19937_64 random(1);
  const std::vector<std::uint64_t> edges = {0, 1, 0xFFFFFFFF, 0x100000000, kMaximum - 1, kMaximum};
  PlainWideNumber plain;
  WideNumber wide;
  for (int count = 0; count < 10'000; ++count) {
    const std::uint64_t left = count % 3 == 0 ? edges[random() % edges.size()] : random();
    const std::uint64_t right = count % 5 == 0 ? edges[random() % edges.size()] : random();
    plain.addProduct(left, right);
    wide.addProduct(left, right);
    ASSERT_EQ(halvesOf(wide.halves()), halvesOf(plain)) << left << " times " << right;
  }
}

}  // namespace
}  // namespace mf::zero
