#include "json/scan/StringScan.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
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

using Scan = const char* (*)(const char*, const char*);

struct QuoteFinder {
  const char* name;
  Scan scan;
};

void PrintTo(const QuoteFinder& finder, std::ostream* stream) {
  *stream << finder.name;
}

constexpr QuoteFinder kQuoteFinders[] = {
    {"Plain", findQuoteOrBackslashPlain},
#if defined(__SSE2__)
    {"Sse2", findQuoteOrBackslashSse2},
#endif
    {"Quickest", findQuoteOrBackslash},
};

class StringScan : public ::testing::TestWithParam<QuoteFinder> {
 protected:
  // Asserts that the first quotation mark or backslash is found.
  void expectFound(std::string_view text) const {
    std::size_t expected = 0;
    while (expected != text.size() && text[expected] != '"' && text[expected] != '\\') {
      ++expected;
    }
    const char* const found = GetParam().scan(text.data(), text.data() + text.size());
    ASSERT_EQ(found - text.data(), static_cast<std::ptrdiff_t>(expected)) << quoted(text);
  }
};

INSTANTIATE_TEST_SUITE_P(Variants, StringScan, ::testing::ValuesIn(kQuoteFinders),
                         [](const auto& row) { return row.param.name; });

TEST_P(StringScan, FindsNothingInAnEmptyText) {
  expectFound("");
  EXPECT_EQ(GetParam().scan(nullptr, nullptr), nullptr);
}

TEST_P(StringScan, FindsTheFirstOfTwoAtEveryPlaceOfEveryLength) {
  GuardedText guarded;
  constexpr std::size_t kMostBytes = 52;
  for (std::size_t size = 0; size <= kMostBytes; ++size) {
    expectFound(guarded.place(std::string(size, 'x')));
    for (std::size_t first = 0; first < size; ++first) {
      for (const char special : {'"', '\\'}) {
        std::string text(size, 'x');
        text[first] = special;
        expectFound(guarded.place(text));
        for (std::size_t second = first + 1; second < size; ++second) {
          text[second] = special == '"' ? '\\' : '"';
          expectFound(guarded.place(text));
          text[second] = 'x';
        }
      }
    }
  }
}

TEST_P(StringScan, FindsFromEveryAlignment) {
  alignas(64) char memory[160];
  for (std::size_t begin = 0; begin < 64; ++begin) {
    for (std::size_t size = 0; size <= 64; ++size) {
      for (std::size_t place = 0; place <= size; ++place) {
        // The bytes around the text are ones that the search looks for.
        std::fill(std::begin(memory), std::end(memory), '"');
        std::fill(memory + begin, memory + begin + size, 'x');
        if (place != size) {
          memory[begin + place] = '\\';
        }
        const char* const found = GetParam().scan(memory + begin, memory + begin + size);
        ASSERT_EQ(found - (memory + begin), static_cast<std::ptrdiff_t>(place))
            << begin << ' ' << size;
      }
    }
  }
}

TEST_P(StringScan, IsNotMisledByAnyByteNextToTheOneThatItLooksFor) {
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      std::string text(20, static_cast<char>(static_cast<unsigned char>(first)));
      text[3] = text[11] = text[18] = static_cast<char>(static_cast<unsigned char>(second));
      expectFound(text);
    }
  }
}

TEST_P(StringScan, AgreesWithANaiveSearchOnRandomTextsThatEndWhereTheMemoryEnds) {
  GuardedText guarded;
  std::mt19937_64 random(1);
  for (int left = 20000; left != 0; --left) {
    std::string text(random() % (left % 100 == 0 ? GuardedText::kCapacity : 80), 'x');
    const std::size_t specialOneIn = 1 + random() % 200;
    for (char& byte : text) {
      byte = random() % specialOneIn == 0
                 ? (random() % 2 == 0 ? '"' : '\\')
                 : static_cast<char>(static_cast<unsigned char>(random() % 256));
    }
    expectFound(guarded.place(text));
  }
}

}  // namespace
}  // namespace foundation::json
