#include "lint/Severity.h"

#include <optional>

#include <gtest/gtest.h>

namespace update_metadata_tool::lint {
namespace {

TEST(SeverityName, IsReadBackAsItIsWritten) {
  for (const Severity severity : {Severity::kInfo, Severity::kWarning, Severity::kError}) {
    EXPECT_EQ(findSeverity(nameOf(severity)), severity);
  }
  EXPECT_STREQ(nameOf(std::nullopt), kOff);
  EXPECT_EQ(findSeverity(kOff), std::nullopt);
  EXPECT_EQ(findSeverity("fatal"), std::nullopt);
  EXPECT_EQ(findSeverity(""), std::nullopt);
}

}  // namespace
}  // namespace update_metadata_tool::lint
