#include "support/VisibleText.h"

#include <array>
#include <cstddef>

namespace test_support {

std::string visible(std::u16string_view text) {
  constexpr std::array<char, 16> kDigits = {'0', '1', '2', '3', '4', '5', '6', '7',
                                            '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};
  std::string result = "\"";
  for (const char16_t unit : text) {
    if (unit >= u' ' && unit <= u'~' && unit != u'"' && unit != u'\\') {
      result += static_cast<char>(unit);
      continue;
    }
    result += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
      result += kDigits[static_cast<std::size_t>(unit >> shift) & 0xF];
    }
  }
  return result + '"';
}

}  // namespace test_support
