#include "lint/CharacterIndex.h"

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

namespace update_metadata_tool::lint {
namespace {

TEST(CharacterIndex, CountsCharactersOfEveryLengthOnce) {
  const std::string text = "a\xC3\xBC\xEF\xAC\x81\xF0\x9F\x97\xBA!";
  const CharacterIndex characters(text);
  const std::size_t expected[] = {0, 1, 2, 2, 3, 3, 3, 4, 4, 4, 4, 5};
  for (std::size_t offset = 0; offset <= text.size(); ++offset) {
    EXPECT_EQ(characters.countBefore(offset), expected[offset]) << offset;
  }
}

TEST(CharacterIndex, CountsZeroInAnEmptyText) {
  EXPECT_EQ(CharacterIndex("").countBefore(0), 0U);
}

// Longer than one block, with characters across every boundary.
TEST(CharacterIndex, CountsThroughALongText) {
  std::string text;
  for (int count = 0; count != 5000; ++count) {
    text += "\xEF\xAC\x81";
  }
  const CharacterIndex characters(text);
  for (std::size_t offset = 0; offset <= text.size(); ++offset) {
    ASSERT_EQ(characters.countBefore(offset), (offset + 2) / 3) << offset;
  }
}

TEST(CharacterIndex, GivesEveryOffsetOfIllFormedTextANumber) {
  const CharacterIndex characters("\x80\xFF\x80");
  EXPECT_EQ(characters.countBefore(1), 0U);
  EXPECT_EQ(characters.countBefore(2), 1U);
  EXPECT_EQ(characters.countBefore(3), 1U);
}

}  // namespace
}  // namespace update_metadata_tool::lint
