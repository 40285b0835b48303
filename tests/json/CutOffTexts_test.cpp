// Texts that are cut off, have more after their end, or consist of any one byte.

#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>

#include <gtest/gtest.h>

#include "json/ParseResult.h"
#include "support/JsonOutcome.h"

namespace foundation::json {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using test_support::JsonOutcome;
using test_support::outcomeOf;

constexpr std::string_view kDocument =
    "{\"list\":[1.25e+3,-0.5E-1,\"text \\n \\\" \\\\\"],\n \"empty\":{},\n \"more\":{\"a\":[[],"
    "[{}]],\"qztype\":\"int8\",\"qzdata\":[1, -2 ,0]}}";

TEST(CutOffDocuments, AreRejectedAtTheirEnd) {
  ASSERT_EQ(outcomeOf(std::string(kDocument)).kind, JsonOutcome::Kind::kValue);
  for (std::size_t size = 0; size != kDocument.size(); ++size) {
    const JsonOutcome outcome = outcomeOf(std::string(kDocument.substr(0, size)));
    if (outcome.kind == JsonOutcome::Kind::kRuntimeError) {
      // The text ends inside the name of the type, which is therefore not a string.
      EXPECT_EQ(outcome.message, "invalid conversion: undefined to string");
      EXPECT_TRUE(kDocument.substr(size).find("\"qzdata\"") < 8) << size;
      continue;
    }
    EXPECT_EQ(std::make_tuple(outcome.kind, outcome.code, outcome.offset),
              std::make_tuple(JsonOutcome::Kind::kParserException, kEndOfText, size));
  }
}

TEST(DocumentsWithMore, AreRejectedAfterTheirEnd) {
  for (int number = 0; number < 256; ++number) {
    const std::string text =
        std::string(kDocument) + static_cast<char>(static_cast<unsigned char>(number));
    const JsonOutcome outcome = outcomeOf(text);
    EXPECT_EQ(std::make_tuple(outcome.kind, outcome.code, outcome.offset),
              std::make_tuple(JsonOutcome::Kind::kParserException, kSuccess, kDocument.size()));
  }
}

TEST(EveryByte, IsAcceptedWhereAValueIsOnlyIfAValueStartsWithIt) {
  for (int number = 0; number < 256; ++number) {
    const char byte = static_cast<char>(static_cast<unsigned char>(number));
    if ("\"{[0123456789-"sv.find(byte) != std::string_view::npos) {
      continue;
    }
    const JsonOutcome outcome = outcomeOf("["s + byte + "]");
    if (byte == ']') {
      EXPECT_EQ(outcome.code, kSuccess);
    } else if (byte == ' ' || (number >= 9 && number <= 13)) {
      EXPECT_EQ(outcome.kind, JsonOutcome::Kind::kValue);
    } else {
      EXPECT_EQ(std::make_tuple(outcome.kind, outcome.code, outcome.offset),
                std::make_tuple(JsonOutcome::Kind::kParserException, kNoOpeningQuote, 1u))
          << "byte " << number;
    }
  }
}

}  // namespace
}  // namespace foundation::json
