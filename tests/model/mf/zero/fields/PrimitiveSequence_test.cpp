#include "mf/zero/fields/PrimitiveSequence.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"
#include "support/SampleStrings.h"

namespace mf::zero {
namespace {

using install::datamodels::product_update::PkgDataWithFilesToDelete;
using Strings = PrimitiveSequence<std::u16string>;

static_assert(!std::is_copy_constructible_v<Strings> && !std::is_copy_assignable_v<Strings>);

std::vector<std::u16string> valuesOf(const Strings& sequence) {
  return {sequence.begin(), sequence.end()};
}

class Sequence : public ::testing::Test {
 protected:
  Model model = Model::create(ModelSpec());
  PkgDataWithFilesToDelete owner = PkgDataWithFilesToDelete::create(model, Uuid());
  Strings admitting{*owner.operator->(), Duplicates::kAdmitted};
  Strings refusing{*owner.operator->(), Duplicates::kRefused};
};

TEST_F(Sequence, IsEmptyAtFirst) {
  EXPECT_TRUE(admitting.empty());
  EXPECT_EQ(admitting.size(), 0u);
  EXPECT_EQ(valuesOf(admitting), std::vector<std::u16string>());
}

TEST_F(Sequence, KeepsEveryUnitAndTheOrderOfAppending) {
  const std::vector<std::u16string> values = test_support::sampleStrings();
  for (const std::u16string& value : values) {
    admitting.push_back(value);
  }
  EXPECT_TRUE(valuesOf(admitting) == values);
  EXPECT_EQ(admitting.size(), values.size());
  EXPECT_FALSE(admitting.empty());
}

TEST_F(Sequence, HasIteratorsThatKeepTheirPlaces) {
  admitting.push_back(u"a");
  admitting.push_back(u"b");
  auto position = admitting.begin();
  const auto first = position++;
  EXPECT_EQ((*first).text(), u"a");
  EXPECT_EQ((*position).text(), u"b");
  EXPECT_EQ(position++, std::next(first));
  EXPECT_EQ(position, admitting.end());
}

TEST_F(Sequence, KeepsEqualValuesIfItAllowsThem) {
  admitting.push_back(u"a");
  admitting.push_back(u"b");
  admitting.push_back(u"a");
  EXPECT_EQ(valuesOf(admitting), (std::vector<std::u16string>{u"a", u"b", u"a"}));
}

TEST_F(Sequence, KeepsTheFirstOfEqualValuesIfItDoesNotAllowThem) {
  using namespace std::string_literals;
  for (const std::u16string& value :
       {u"a"s, u"b"s, u"a"s, u"a\0"s, u"A"s, u"a\0"s, u""s, u""s, u"\u4E2D"s, u"\u4E2D"s}) {
    refusing.push_back(value);
  }
  EXPECT_EQ(valuesOf(refusing),
            (std::vector<std::u16string>{u"a", u"b", u"a\0"s, u"A", u"", u"\u4E2D"}));
}

TEST_F(Sequence, CanAppendOneOfItsOwnValues) {
  admitting.push_back(u"a value that is too long to be kept inside the string object");
  for (int count = 0; count < 20; ++count) {
    admitting.push_back((*admitting.begin()).text());
  }
  EXPECT_EQ(valuesOf(admitting), std::vector<std::u16string>(21, *admitting.begin()));
}

TEST_F(Sequence, AcceptsAHundredThousandValues) {
  constexpr std::size_t kMany = 100000;
  for (std::size_t count = 0; count < kMany; ++count) {
    admitting.push_back(u"the/same/path");
  }
  EXPECT_EQ(admitting.size(), kMany);
  EXPECT_EQ(valuesOf(admitting), std::vector<std::u16string>(kMany, u"the/same/path"));
}

TEST_F(Sequence, IncludesValuesAppendedDuringAWalk) {
  admitting.push_back(u"first");
  std::vector<std::u16string> walked;
  for (const CompactString& value : admitting) {
    if (walked.size() < 3) {
      admitting.push_back(u"next");
    }
    walked.push_back(value.text());
  }
  EXPECT_EQ(walked, (std::vector<std::u16string>{u"first", u"next", u"next", u"next"}));
}

TEST_F(Sequence, IsSeparateFromOtherSequencesOfItsModel) {
  for (const char16_t* value : {u"a", u"b", u"c"}) {
    admitting.push_back(value);
    refusing.push_back(std::u16string(value) + u"'");
  }
  EXPECT_EQ(valuesOf(admitting), (std::vector<std::u16string>{u"a", u"b", u"c"}));
  EXPECT_EQ(valuesOf(refusing), (std::vector<std::u16string>{u"a'", u"b'", u"c'"}));
}

}  // namespace
}  // namespace mf::zero
