#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace test_support {

/// Strings that must come back unit by unit: nothing may trim, fold, terminate or repair them.
inline std::vector<std::u16string> sampleStrings() {
  using namespace std::string_literals;
  return {
      u""s,                                              // the empty string
      u" \t padded \n"s,                                 // white space at both ends
      u"Stra\u00DFe STRASSE \u0130"s,                    // letters whose case folding differs
      u"\0"s,                                            // a NUL alone
      u"before\0after\0"s,                               // NULs inside and at the end
      u"\uFEFFmark"s,                                    // a byte-order mark
      u"\U0001F600\uE000\uFFFF"s,                        // a pair, then units above it
      std::u16string(1, static_cast<char16_t>(0xD800)),  // an unpaired high surrogate
      std::u16string(1, static_cast<char16_t>(0xDFFF)),  // an unpaired low surrogate
      std::u16string(std::size_t{300000}, u'x'),         // longer than any block of a pool
  };
}

}  // namespace test_support
