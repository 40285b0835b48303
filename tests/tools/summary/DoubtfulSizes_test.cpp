#include "summary/DoubtfulSizes.h"

#include <string>

#include <gtest/gtest.h>

#include "summary/SizeLimits.h"

namespace update_metadata_tool::summary {
namespace {

TEST(DoubtfulSizes, AreCountedByPackageAndByKind) {
  Contents contents;
  contents.packagesToDelete = {{u"a", 0, 0}, {u"b", -1, 0}, {u"c", kMin, 0}, {u"d", kMin + 1, 0}};
  contents.packagesToExtract = {{u"a", 1, 1}, {u"b", 1, -1}, {u"c", -1, kMin}, {u"d", kMin, -1}};
  const DoubtfulSizes all = countDoubtfulSizes(contents, Tally(contents).selectAll());
  EXPECT_EQ(all.negative, 3U);
  EXPECT_EQ(all.truncated, 3U);
  const DoubtfulSizes some = countDoubtfulSizes(contents, {{}, {0, 1}, {0}});
  EXPECT_EQ(some.negative, 1U);
  EXPECT_EQ(some.truncated, 0U);
  EXPECT_TRUE(some.any());
  EXPECT_FALSE(DoubtfulSizes().any());
}

TEST(DoubtfulSizes, AreDescribedByKind) {
  const std::string beginning = "'!' marks doubtful sizes: ";
  const std::string end = ". Totals include these sizes.";
  const std::string truncated =
      " with a size that does not fit into 64 bits and is read as -9223372036854775808";
  EXPECT_EQ(describe({1, 0}), beginning + "1 package with a negative size" + end);
  EXPECT_EQ(describe({0, 2}), beginning + "2 packages" + truncated + end);
  EXPECT_EQ(describe({1, 0}, false),
            "there are doubtful sizes: 1 package with a negative size" + end);
  EXPECT_EQ(describe({2, 1}),
            beginning + "2 packages with a negative size, 1 package" + truncated + end);
}

}  // namespace
}  // namespace update_metadata_tool::summary
