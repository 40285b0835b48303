#include "mf/zero/text/CompactString.h"

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"
#include "support/SampleStrings.h"

namespace mf::zero {
namespace {

using install::datamodels::product_update::PkgDataWithFilesToDelete;

static_assert(sizeof(CompactString) == sizeof(void*));

int sign(int order) {
  return static_cast<int>(order > 0) - static_cast<int>(order < 0);
}

class CompactStrings : public ::testing::Test {
 protected:
  // The string as a sequence stores it.
  CompactString store(const std::u16string& text) const {
    const PkgDataWithFilesToDelete pkg = PkgDataWithFilesToDelete::create(model, Uuid());
    pkg->getFilesToDeleteMutable().push_back(text);
    return *pkg->getFilesToDelete().begin();
  }

  // Strings of every size up to 70, with at most one unit beyond ASCII, at any place.
  static std::vector<std::u16string> almostAscii() {
    std::vector<std::u16string> texts;
    for (std::size_t size = 0; size <= 70; ++size) {
      const std::u16string text(size, u'a');
      texts.push_back(text);
      for (std::size_t index = 0; index < size; ++index) {
        for (const char16_t unit : {u'\0', u'\x7F', u'\x80', u'\xFF', u'\u0100', u'\uFFFF'}) {
          texts.push_back(text);
          texts.back()[index] = unit;
        }
      }
    }
    return texts;
  }

  Model model = Model::create(ModelSpec());
};

TEST_F(CompactStrings, ComeBackUnitByUnit) {
  for (const std::u16string& text : almostAscii()) {
    const CompactString stored = store(text);
    ASSERT_EQ(stored.size(), text.size());
    ASSERT_TRUE(stored.text() == text);
    ASSERT_TRUE(stored.equals(text));
  }
}

TEST_F(CompactStrings, AreReadIntoMemoryWithoutSpareCapacity) {
  for (const char16_t unit : {u'a', u'\u4E2D'}) {
    const std::u16string text(100, unit);
    // As much as the standard library allocates for that size.
    std::u16string exact;
    exact.reserve(text.size());
    EXPECT_EQ(store(text).text().capacity(), exact.capacity());
  }
}

TEST_F(CompactStrings, OutliveTheirElement) {
  const CompactString stored = store(u"path");
  for (int count = 0; count < 100; ++count) {
    store(u"other");
  }
  EXPECT_EQ(stored.text(), u"path");
}

TEST_F(CompactStrings, SortAsStringsDo) {
  std::vector<std::u16string> texts = test_support::sampleStrings();
  for (const char16_t* text : {u"", u"a", u"ab", u"b", u"\x7F", u"\x80", u"a\x80", u"a\xFF",
                               u"a\u0100", u"ab\u0100", u"a\xD800", u"a\uE000", u"\uFFFF"}) {
    texts.emplace_back(text);
  }
  for (const std::u16string& left : texts) {
    for (const std::u16string& right : texts) {
      EXPECT_EQ(sign(store(left).compare(store(right))), sign(left.compare(right)));
      EXPECT_EQ(store(left).equals(right), left == right);
    }
  }
}

}  // namespace
}  // namespace mf::zero
