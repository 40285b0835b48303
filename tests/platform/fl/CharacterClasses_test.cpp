#include "fl/i18n.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using fl::i18n::lcctype::isdigit_ascii;
using fl::i18n::lcctype::isspace_ascii;

TEST(CharacterClasses, KnowAsciiOnly) {
  std::string digits;
  std::string spaces;
  for (unsigned number = 0; number < 0x100; ++number) {
    const char byte = static_cast<char>(static_cast<unsigned char>(number));
    if (isdigit_ascii(byte)) {
      digits += byte;
    }
    if (isspace_ascii(byte)) {
      spaces += byte;
    }
  }
  EXPECT_EQ(digits, "0123456789");
  EXPECT_EQ(spaces, "\x09\x0A\x0B\x0C\x0D\x20");
}

TEST(CharacterClasses, AreConstantExpressionsThatThrowNothing) {
  static_assert(isdigit_ascii('7') && !isdigit_ascii('/') && !isdigit_ascii(':'));
  static_assert(isspace_ascii('\v') && !isspace_ascii('\b') && !isspace_ascii('\0'));
  static_assert(noexcept(isdigit_ascii('0'))&& noexcept(isspace_ascii(' ')));
}

}  // namespace
