#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "json/scan/Conversions.h"
#include "support/Effort.h"

namespace foundation::json::detail {
namespace {

using namespace std::string_literals;
using test_support::kFullEffort;

std::string naiveUtf8(char32_t point) {
  const auto byte = [](char32_t value) {
    return std::string(1, static_cast<char>(static_cast<unsigned char>(value)));
  };
  const auto trailing = [&](char32_t value) { return byte(0x80 + value % 0x40); };
  if (point < 0x80) {
    return byte(point);
  }
  if (point < 0x800) {
    return byte(0xC0 + point / 0x40) + trailing(point);
  }
  if (point < 0x10000) {
    return byte(0xE0 + point / 0x1000) + trailing(point / 0x40) + trailing(point);
  }
  return byte(0xF0 + point / 0x40000) + trailing(point / 0x1000) + trailing(point / 0x40) +
         trailing(point);
}

const std::string kReplacement = "\xEF\xBF\xBD";

std::string naiveUtf8OfUnit(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDFFF ? kReplacement : naiveUtf8(unit);
}

TEST(U16ToU8, ConvertsEverySingleUnit) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const std::u16string units(1, static_cast<char16_t>(unit));
    ASSERT_EQ(u16_to_u8(units), naiveUtf8OfUnit(units[0])) << unit;
  }
}

TEST(U16ToU8, ConvertsEverySurrogatePair) {
  for (char32_t point = 0x10000; point <= 0x10FFFF; point += kFullEffort ? 1 : 7) {
    const std::u16string units = {static_cast<char16_t>(0xD800 + (point - 0x10000) / 0x400),
                                  static_cast<char16_t>(0xDC00 + (point - 0x10000) % 0x400)};
    ASSERT_EQ(u16_to_u8(units), naiveUtf8(point)) << static_cast<std::uint32_t>(point);
  }
}

TEST(U16ToU8, ReplacesEachSurrogateThatHasNoPartner) {
  const std::vector<char16_t> units = {0x0000, 0x0041, 0x007F, 0x0080, 0x07FF, 0x0800,
                                       0xD7FF, 0xD800, 0xD83D, 0xDBFF, 0xDC00, 0xDE00,
                                       0xDFFF, 0xE000, 0xFFFD, 0xFFFF};
  for (const char16_t first : units) {
    for (const char16_t second : units) {
      const bool isPair =
          first >= 0xD800 && first <= 0xDBFF && second >= 0xDC00 && second <= 0xDFFF;
      if (!isPair) {
        EXPECT_EQ(u16_to_u8(std::u16string{first, second}),
                  naiveUtf8OfUnit(first) + naiveUtf8OfUnit(second))
            << static_cast<unsigned>(first) << ' ' << static_cast<unsigned>(second);
      }
    }
  }
}

TEST(U16ToU8, ConvertsTextsOfAnyLength) {
  EXPECT_EQ(u16_to_u8(u""), "");
  EXPECT_EQ(u16_to_u8(u"a\u00E9\u20AC\U0001F600z"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z");
  EXPECT_EQ(u16_to_u8(std::u16string(u"a\0b", 3)), "a\0b"s);
  EXPECT_EQ(u16_to_u8(std::u16string{0xD83D, 0xD83D, 0xDE00}), kReplacement + "\xF0\x9F\x98\x80");
  EXPECT_EQ(u16_to_u8(std::u16string{0xDE00, 0xD83D}), kReplacement + kReplacement);
}

}  // namespace
}  // namespace foundation::json::detail
