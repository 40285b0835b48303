// Numbers are correctly rounded, by exact arithmetic, in every locale.

#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "json/ParserException.h"
#include "support/BigInteger.h"
#include "support/Effort.h"
#include "support/ExactNumber.h"
#include "support/InLocale.h"
#include "support/Locales.h"

namespace foundation::json {
namespace {

using test_support::BigInteger;
using test_support::isNearest;
using test_support::kFullEffort;
using test_support::NumberTexts;

// -------------------------------------------------------------------------------------------------
// The arithmetic itself

TEST(BigInteger, CalculatesExactly) {
  BigInteger integer(UINT64_MAX);
  EXPECT_EQ(integer.digits(), "18446744073709551615");
  integer.add(BigInteger(1));
  EXPECT_EQ(integer.digits(), "18446744073709551616");
  EXPECT_EQ((integer * integer).digits(), "340282366920938463463374607431768211456");
  integer.shiftLeft(64);
  EXPECT_EQ(integer.digits(), "340282366920938463463374607431768211456");
  integer.multiplyAndAdd(10, 7);
  EXPECT_EQ(integer.digits(), "3402823669209384634633746074317682114567");
  EXPECT_EQ(integer.divide(1000), 567U);
  EXPECT_EQ(integer.digits(), "3402823669209384634633746074317682114");
  EXPECT_EQ(BigInteger::powerOfTen(30).digits(), "1" + std::string(30, '0'));
  EXPECT_EQ(BigInteger().digits(), "0");
  EXPECT_LT(BigInteger(9).compare(BigInteger(10)), 0);
  EXPECT_LT(BigInteger(UINT64_MAX).compare(BigInteger::powerOfTen(20)), 0);
  EXPECT_EQ(BigInteger(100).compare(BigInteger::powerOfTen(2)), 0);
}

TEST(NearestDouble, IsKnownByExactArithmetic) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kLargest = std::numeric_limits<double>::max();
  constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
  EXPECT_TRUE(isNearest("0.1", 0.1));
  EXPECT_FALSE(isNearest("0.1", 0.10000000000000002));
  EXPECT_FALSE(isNearest("0.1", 0.09999999999999999));
  EXPECT_TRUE(isNearest("-12.5e1", -125.0));
  EXPECT_FALSE(isNearest("-12.5e1", 125.0));
  EXPECT_TRUE(isNearest("9007199254740993", 9007199254740992.0));
  EXPECT_FALSE(isNearest("9007199254740993", 9007199254740994.0));
  EXPECT_TRUE(isNearest("9007199254740993.0001", 9007199254740994.0));
  EXPECT_TRUE(isNearest("1.797693134862315807e308", kLargest));
  EXPECT_FALSE(isNearest("1.797693134862315808e308", kLargest));
  EXPECT_TRUE(isNearest("1.797693134862315808e308", kInfinity));
  EXPECT_FALSE(isNearest("1.797693134862315807e308", kInfinity));
  EXPECT_TRUE(isNearest("2.4703282292062327e-324", 0.0));
  EXPECT_FALSE(isNearest("2.4703282292062327e-324", kSmallest));
  EXPECT_TRUE(isNearest("2.4703282292062328e-324", kSmallest));
  EXPECT_TRUE(isNearest("-0", -0.0));
  EXPECT_FALSE(isNearest("-0", 0.0));
}

// -------------------------------------------------------------------------------------------------
// The reader

class NumbersInLocale : public test_support::InLocale {};

void expectNearest(const std::string& text) {
  const double number = parseJsonText(text).as<double>();
  ASSERT_TRUE(isNearest(text, number)) << text << " is read as " << number;
}

// One test, because some locales take a second to create.
TEST_P(NumbersInLocale, AreTheNearestDoubles) {
  EXPECT_EQ(parseJsonText("1234567.25").as<double>(), 1234567.25);
  EXPECT_THROW(parseJsonText("1,5"), ParserException);
  NumberTexts texts(1);
  for (int left = kFullEffort ? 20000 : 4000; left != 0 && !HasFatalFailure(); --left) {
    expectNearest(texts.random());
  }
  for (int left = kFullEffort ? 2000 : 100; left != 0 && !HasFatalFailure(); --left) {
    expectNearest(texts.hard());
  }
}

std::string nameOf(const ::testing::TestParamInfo<const char*>& row) {
  std::string name = row.param;
  for (char& character : name) {
    character = character == '.' || character == '-' ? '_' : character;
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Locales, NumbersInLocale,
                         ::testing::ValuesIn(test_support::localesOfTests()), nameOf);

}  // namespace
}  // namespace foundation::json
