#include "mf/zero/PrimitiveSequence.h"

#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/SampleStrings.h"

namespace mf::zero {
namespace {

using Strings = PrimitiveSequence<std::u16string>;

static_assert(!std::is_copy_constructible_v<Strings> && !std::is_copy_assignable_v<Strings>);

std::vector<std::u16string> valuesOf(const Strings& sequence) {
  return {sequence.begin(), sequence.end()};
}

TEST(PrimitiveSequence, IsEmptyAtFirst) {
  const Strings sequence(Duplicates::kAdmitted);
  EXPECT_TRUE(sequence.empty());
  EXPECT_EQ(sequence.size(), 0u);
  EXPECT_EQ(valuesOf(sequence), std::vector<std::u16string>());
}

TEST(PrimitiveSequence, KeepsEveryUnitAndTheOrderOfAppending) {
  const std::vector<std::u16string> values = test_support::sampleStrings();
  Strings sequence(Duplicates::kAdmitted);
  for (const std::u16string& value : values) {
    sequence.push_back(value);
  }
  EXPECT_TRUE(valuesOf(sequence) == values);
  EXPECT_EQ(sequence.size(), values.size());
  EXPECT_EQ(sequence[1], values[1]);
  EXPECT_FALSE(sequence.empty());
}

TEST(PrimitiveSequence, KeepsEqualValuesWhereItAdmitsThem) {
  Strings sequence(Duplicates::kAdmitted);
  sequence.push_back(u"a");
  sequence.push_back(u"b");
  sequence.push_back(u"a");
  EXPECT_EQ(valuesOf(sequence), (std::vector<std::u16string>{u"a", u"b", u"a"}));
}

TEST(PrimitiveSequence, TakesEqualValuesOnceWhereItRefusesThem) {
  using namespace std::string_literals;
  Strings sequence(Duplicates::kRefused);
  for (const std::u16string& value : {u"a"s, u"b"s, u"a"s, u"a\0"s, u"A"s, u"a\0"s, u""s, u""s}) {
    sequence.push_back(value);
  }
  EXPECT_EQ(valuesOf(sequence), (std::vector<std::u16string>{u"a", u"b", u"a\0"s, u"A", u""}));
}

TEST(PrimitiveSequence, TakesAValueThatItHoldsItself) {
  Strings sequence(Duplicates::kAdmitted);
  sequence.push_back(u"a value that is too long to be kept inside the string object");
  for (int count = 0; count < 20; ++count) {
    sequence.push_back(sequence[0]);
  }
  EXPECT_EQ(valuesOf(sequence), std::vector<std::u16string>(21, sequence[0]));
}

TEST(PrimitiveSequence, TakesAHundredThousandValues) {
  constexpr std::size_t kMany = 100000;
  Strings sequence(Duplicates::kAdmitted);
  for (std::size_t count = 0; count < kMany; ++count) {
    sequence.reserve(sequence.size() + 1);
    sequence.push_back(u"the/same/path");
  }
  EXPECT_EQ(sequence.size(), kMany);
}

}  // namespace
}  // namespace mf::zero
