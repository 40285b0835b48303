#include "handler/UnitOrder.h"

#include <cstddef>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "handler/Sign.h"

namespace install::update_metadata_parser {
namespace {

using test_support::signOf;

void expectOrderOfStrings(std::u16string_view left, std::u16string_view right) {
  ASSERT_EQ(signOf(compareUnits(left, right)), signOf(left.compare(right)))
      << ::testing::PrintToString(left) << ' ' << ::testing::PrintToString(right);
}

TEST(UnitOrder, IsThatOfStringsWhereverTheyDifferAndWhereverTheyEnd) {
  constexpr std::size_t kMostUnits = 14;
  // Units whose bytes, low or high, would order them otherwise.
  constexpr char16_t kUnits[] = {u'\0', u'\x00FF', u'\x0100', u'\x01FE', u'\xD83D', u'\xFFFF'};
  for (std::size_t left = 0; left <= kMostUnits; ++left) {
    for (std::size_t right = 0; right <= kMostUnits; ++right) {
      const std::u16string one(left, u'a');
      std::u16string other(right, u'a');
      expectOrderOfStrings(one, other);
      for (std::size_t place = 0; place != right; ++place) {
        for (const char16_t unit : kUnits) {
          other[place] = unit;
          expectOrderOfStrings(one, other);
          expectOrderOfStrings(other, one);
          other[place] = u'a';
        }
      }
    }
  }
}

TEST(UnitOrder, IsDecidedByTheFirstDifference) {
  expectOrderOfStrings(u"aaaabaaa", u"aaaaabbb");
  expectOrderOfStrings(u"abaa", u"aaba");
  expectOrderOfStrings(u"aaaaaaab", u"aaaaaaba");
}

TEST(UnitOrder, OfNothingIsEqual) {
  EXPECT_EQ(compareUnits({}, {}), 0);
  EXPECT_EQ(compareUnits({}, u""), 0);
}

}  // namespace
}  // namespace install::update_metadata_parser
