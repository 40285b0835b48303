#include "json/scan/DigitScan.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/GuardedText.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using test_support::GuardedText;
using test_support::quoted;

using Read = const char* (*)(const char*, const char*, std::uint64_t&);

struct DigitReader {
  const char* name;
  Read read;
};

void PrintTo(const DigitReader& reader, std::ostream* stream) {
  *stream << reader.name;
}

constexpr DigitReader kDigitReaders[] = {
    {"Plain", readDigitsPlain},
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    {"ByEight", readDigitsByEight},
#endif
    {"Quickest", readDigits},
};

class DigitScan : public ::testing::TestWithParam<DigitReader> {
 protected:
  // Asserts that the leading digits of a text are read and appended to the number `before`.
  void expectRead(std::string_view text, std::uint64_t before = 0) const {
    std::uint64_t expected = before;
    std::size_t digits = 0;
    for (; digits != text.size() && text[digits] >= '0' && text[digits] <= '9'; ++digits) {
      expected = expected * 10 + static_cast<std::uint64_t>(text[digits] - '0');
    }
    std::uint64_t integer = before;
    const char* const end = GetParam().read(text.data(), text.data() + text.size(), integer);
    ASSERT_EQ(end - text.data(), static_cast<std::ptrdiff_t>(digits)) << quoted(text);
    ASSERT_EQ(integer, expected) << quoted(text);
  }
};

INSTANTIATE_TEST_SUITE_P(Variants, DigitScan, ::testing::ValuesIn(kDigitReaders),
                         [](const auto& row) { return row.param.name; });

TEST_P(DigitScan, ReadsUpToEveryOtherByteAtEveryPlaceOfEveryLength) {
  GuardedText guarded;
  constexpr std::string_view kDigits = "1234567890987654321012345";
  for (std::size_t size = 0; size <= kDigits.size(); ++size) {
    expectRead(guarded.place(kDigits.substr(0, size)));
    for (std::size_t place = 0; place != size; ++place) {
      for (int number = 0; number < 256; ++number) {
        std::string text(kDigits.substr(0, size));
        text[place] = static_cast<char>(static_cast<unsigned char>(number));
        expectRead(guarded.place(text));
      }
    }
  }
}

TEST_P(DigitScan, AppendsToWhatWasReadBeforeAndWrapsAround) {
  expectRead("123", 45);
  expectRead("12345678", 9);
  expectRead("99999999999999999999", 0);
  expectRead("18446744073709551615", 0);
  expectRead("18446744073709551616", 0);
  expectRead("00000000000000000000000000001", 7);
}

TEST_P(DigitScan, ReadsEightDigitsOfEachKind) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    expectRead(std::string(8, digit) + ",");
    expectRead(std::string(16, digit) + "]");
  }
}

TEST_P(DigitScan, AgreesWithANaiveReadingOfRandomBytes) {
  GuardedText guarded;
  std::mt19937_64 random(1);
  for (int left = 50000; left != 0; --left) {
    std::string text(random() % 24, '0');
    const std::size_t otherOneIn = 1 + random() % 40;
    for (char& byte : text) {
      byte = random() % otherOneIn == 0 ? static_cast<char>(static_cast<unsigned char>(random()))
                                        : static_cast<char>('0' + random() % 10);
    }
    expectRead(guarded.place(text), random());
  }
}

}  // namespace
}  // namespace foundation::json
