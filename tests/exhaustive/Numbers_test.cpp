// 1,000,000 random numbers and 10,000 that are hard to round: each is read as the nearest double,
// by exact arithmetic, in every locale.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "support/ExactNumber.h"
#include "support/Locales.h"

namespace {

using test_support::isNearest;
using test_support::LocaleScope;
using test_support::localesOfTests;
using test_support::NumberTexts;

constexpr std::size_t kShares = 50;
constexpr std::size_t kRandomNumbers = 1'000'000 / kShares;
constexpr std::size_t kHardNumbers = 10'000 / kShares;

std::vector<double> readAll(const std::vector<std::string>& texts) {
  std::vector<double> numbers;
  for (const std::string& text : texts) {
    numbers.push_back(foundation::json::parseJsonText(text).as<double>());
  }
  return numbers;
}

void expectNearest(const std::vector<std::string>& texts) {
  const std::vector<double> numbers = readAll(texts);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    ASSERT_TRUE(isNearest(texts[i], numbers[i])) << texts[i] << " is read as " << numbers[i];
  }
  for (const char* name : localesOfTests()) {
    const LocaleScope locale(name);
    const std::vector<double> again = readAll(texts);
    ASSERT_EQ(std::memcmp(again.data(), numbers.data(), numbers.size() * sizeof(double)), 0)
        << "in " << name;
  }
  ::testing::Test::RecordProperty("inputs", std::to_string(texts.size()));
}

class Numbers : public ::testing::TestWithParam<std::uint64_t> {};

TEST_P(Numbers, AreReadAsTheNearestDouble) {
  NumberTexts source(100 + GetParam());
  std::vector<std::string> texts;
  while (texts.size() != kRandomNumbers) {
    texts.push_back(source.random());
  }
  expectNearest(texts);
}

TEST_P(Numbers, AreReadAsTheNearestDoubleWhenTheyAreHardToRound) {
  NumberTexts source(1000 + GetParam());
  std::vector<std::string> texts;
  while (texts.size() != kHardNumbers) {
    texts.push_back(source.hard());
  }
  expectNearest(texts);
}

INSTANTIATE_TEST_SUITE_P(Shares, Numbers, ::testing::Range<std::uint64_t>(0, kShares));

}  // namespace
