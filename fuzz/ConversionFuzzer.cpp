// Any bytes as UTF-8 and as UTF-16: both conversions agree with naive ones.

#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "Fuzzer.h"
#include "Require.h"
#include "fl/i18n.h"
#include "json/scan/Conversions.h"
#include "support/NaiveText.h"

using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // Blocks of exactly the texts' sizes, so that sanitizers notice every read beyond them.
  const auto bytes = std::make_unique<char[]>(size);
  const std::size_t unitCount = size / sizeof(char16_t);
  const auto units = std::make_unique<char16_t[]>(unitCount);
  if (size != 0) {
    std::memcpy(bytes.get(), data, size);
    std::memcpy(units.get(), data, unitCount * sizeof(char16_t));
  }

  const std::string_view narrow(bytes.get(), size);
  const std::u16string wide = fl::i18n::utf8_to_ustring(narrow);
  require(wide == test_support::naiveToUtf16(narrow), "UTF-8 is read differently");
  require(fl::i18n::to_ustring(narrow) == wide, "the two conversions from UTF-8 differ");
  require(fl::i18n::utf8_to_ustring(fl::i18n::to_string(wide)) == wide,
          "what was read is not well-formed");

  const std::u16string_view sixteen(units.get(), unitCount);
  const std::string written = fl::i18n::to_string(sixteen);
  require(written == test_support::naiveToUtf8(sixteen), "UTF-16 is written differently");
  require(foundation::json::detail::u16_to_u8(sixteen) == written,
          "the two conversions to UTF-8 differ");
  require(fl::i18n::to_string(fl::i18n::utf8_to_ustring(written)) == written,
          "what was written is not well-formed");
  return 0;
}
