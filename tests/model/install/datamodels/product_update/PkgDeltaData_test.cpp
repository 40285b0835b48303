#include "install/datamodels/product_update/PkgDeltaData.h"

#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "support/ModelDump.h"
#include "support/SampleStrings.h"

namespace install::datamodels::product_update {
namespace {

PkgDeltaData makePkg() {
  return PkgDeltaData::create(mf::zero::Model::create(mf::zero::ModelSpec()), mf::zero::Uuid());
}

TEST(PkgDeltaData, ReadsAsUnsetWhenItIsNew) {
  EXPECT_EQ(test_support::dump(makePkg()), "package \"\": size 0, unpacked 0\n");
}

TEST(PkgDeltaData, KeepsEveryUnitOfItsName) {
  const PkgDeltaData pkg = makePkg();
  for (const std::u16string& text : test_support::sampleStrings()) {
    pkg->setName(text);
    EXPECT_TRUE(pkg->getName() == text);
    EXPECT_TRUE(pkg->name().view() == text);
  }
}

TEST(PkgDeltaData, KeepsItsTwoNumbersApartAndUnchanged) {
  const PkgDeltaData pkg = makePkg();
  constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
  constexpr std::int64_t kSmallest = std::numeric_limits<std::int64_t>::min();
  for (const std::int64_t number : {std::int64_t{0}, std::int64_t{-1}, kLargest, kSmallest}) {
    pkg->setSize(number);
    pkg->setUncompressedBytes(~number);
    EXPECT_EQ(pkg->getSize(), number);
    EXPECT_EQ(pkg->getUncompressedBytes(), ~number);
  }
}

TEST(PkgDeltaData, LeavesTheUnpackedSizeUnsetWhenOnlyTheSizeIsSet) {
  const PkgDeltaData pkg = makePkg();
  pkg->setName(u"old");
  pkg->setSize(5);
  EXPECT_EQ(test_support::dump(pkg), "package \"old\": size 5, unpacked 0\n");
}

}  // namespace
}  // namespace install::datamodels::product_update
