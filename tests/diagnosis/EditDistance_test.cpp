#include "diagnosis/EditDistance.h"

#include <gtest/gtest.h>

namespace install::update_metadata_parser::diagnosis {
namespace {

TEST(EditDistance, CountsChangedInsertedAndRemovedBytesIgnoringCase) {
  EXPECT_EQ(editDistance("", "abc"), 3U);
  EXPECT_EQ(editDistance("size", "Size"), 0U);
  EXPECT_EQ(editDistance("componentsWithFilesToDelete", "componentsWithFilesDeleted"), 3U);
  EXPECT_EQ(editDistance("extract", "extrakt"), 1U);
}

TEST(EditDistance, CountsUnitsOfUtf16) {
  EXPECT_EQ(editDistance(u"\u00e9d", u"ED"), 1U);
  EXPECT_EQ(editDistance(u"ED-1", u"ed1"), 1U);
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
