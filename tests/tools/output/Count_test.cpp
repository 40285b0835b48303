#include "output/Count.h"

#include <gtest/gtest.h>

namespace update_metadata_tool::output {
namespace {

TEST(Count, UsesThePluralUnlessTheNumberIsOne) {
  EXPECT_EQ(count(0, "package"), "0 packages");
  EXPECT_EQ(count(1, "package"), "1 package");
  EXPECT_EQ(count(2, "package"), "2 packages");
}

}  // namespace
}  // namespace update_metadata_tool::output
