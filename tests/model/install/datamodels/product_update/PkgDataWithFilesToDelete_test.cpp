#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"

#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "support/ModelDump.h"
#include "support/SampleStrings.h"

namespace install::datamodels::product_update {
namespace {

PkgDataWithFilesToDelete makePkgWithFiles() {
  return PkgDataWithFilesToDelete::create(mf::zero::Model::create(mf::zero::ModelSpec()),
                                          mf::zero::Uuid());
}

TEST(PkgDataWithFilesToDelete, ReadsAsUnsetWhenItIsNew) {
  const PkgDataWithFilesToDelete pkg = makePkgWithFiles();
  EXPECT_EQ(test_support::dump(pkg), "package \"\": size 0\n");
  EXPECT_EQ(pkg->getFilesToDelete().size(), 0u) << "an empty sequence, not an absent one";
}

TEST(PkgDataWithFilesToDelete, KeepsEveryUnitOfItsName) {
  const PkgDataWithFilesToDelete pkg = makePkgWithFiles();
  for (const std::u16string& text : test_support::sampleStrings()) {
    pkg->setName(text);
    EXPECT_TRUE(pkg->getName() == text);
    EXPECT_TRUE(pkg->name().view() == text);
  }
}

TEST(PkgDataWithFilesToDelete, KeepsItsSizeUnchanged) {
  const PkgDataWithFilesToDelete pkg = makePkgWithFiles();
  for (const std::int64_t size : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1},
                                  std::numeric_limits<std::int64_t>::max()}) {
    pkg->setSize(size);
    EXPECT_EQ(pkg->getSize(), size);
  }
}

TEST(PkgDataWithFilesToDelete, KeepsItsFilesInOrderAlsoEqualOnes) {
  const PkgDataWithFilesToDelete pkg = makePkgWithFiles();
  pkg->setName(u"guide");
  for (const char16_t* file : {u"b", u"a", u"b", u""}) {
    pkg->getFilesToDeleteMutable().push_back(file);
  }
  EXPECT_EQ(test_support::dump(pkg),
            "package \"guide\": size 0\n"
            "  file \"b\"\n"
            "  file \"a\"\n"
            "  file \"b\"\n"
            "  file \"\"\n");
  EXPECT_EQ(&pkg->getFilesToDeleteMutable(), &pkg->getFilesToDelete());
}

}  // namespace
}  // namespace install::datamodels::product_update
