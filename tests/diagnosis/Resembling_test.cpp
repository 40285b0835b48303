#include "diagnosis/Resembling.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace install::update_metadata_parser::diagnosis {
namespace {

TEST(MostEdits, AreAQuarterOfALongName) {
  EXPECT_EQ(mostEdits("size"), 1U);
  EXPECT_EQ(mostEdits("files"), 2U);
  EXPECT_EQ(mostEdits("uncompressedBytes"), 4U);
}

TEST(NearestNames, GiveTheFirstOfTheNearestWithinTheEdits) {
  NearestNames names({"core", "cord", "help", "helper"});
  EXPECT_EQ(names.find("corr", 1), "core");
  EXPECT_EQ(names.find("CORD", 1), "cord");
  EXPECT_EQ(names.find("helpers", 2), "helper");
  EXPECT_EQ(names.find("samples", 2), std::nullopt);
  EXPECT_EQ(names.find(std::string(kLongestResembling + 1, 'a'), 2), std::nullopt);
  EXPECT_EQ(NearestNames().find("core", 1), std::nullopt);
}

TEST(NearestNames, FindNothingOnceManyNamesHaveBeenCompared) {
  const std::vector<std::string> texts(20'000, std::string(20, 'a'));
  NearestNames names({texts.begin(), texts.end()});
  const std::string similar = std::string(19, 'a') + 'b';
  EXPECT_EQ(names.find(similar, 2), texts.front());
  for (int look = 0; look != 1'000; ++look) {
    names.find(similar, 2);
  }
  EXPECT_EQ(names.find(similar, 2), std::nullopt);
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
