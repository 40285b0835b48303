#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/Effort.h"
#include "support/JsonOutcome.h"
#include "support/RandomJsonText.h"
#include "support/Sequences.h"
#include "support/ValueText.h"

namespace foundation::json {
namespace {

using test_support::bytesOf;
using test_support::kFullEffort;
using test_support::naiveOutcomeOf;
using test_support::outcomeOf;
using test_support::Parts;
using test_support::quoted;
using test_support::RandomJsonText;
using test_support::Sequences;

// Asserts that the reader and the naive reader agree: on the value, or on the type, code, place and
// message of the failure.
void expectAgreement(const std::string& text, bool allowComments = false) {
  ASSERT_EQ(outcomeOf(text, allowComments), naiveOutcomeOf(text, allowComments))
      << "for " << quoted(text) << (allowComments ? " with comments" : "");
}

// -------------------------------------------------------------------------------------------------
// Single symbols

constexpr std::string_view kSymbols = "[]{},:\"\\u01-.e \n";

class TextsOfFiveSymbols : public ::testing::TestWithParam<char> {};

TEST_P(TextsOfFiveSymbols, AreReadAlike) {
  const std::string first(1, GetParam());
  const Parts symbols = bytesOf(kSymbols);
  Sequences(symbols, kFullEffort ? 4 : 3).forEach([&](const std::string& rest) {
    expectAgreement(first + rest);
  });
}

INSTANTIATE_TEST_SUITE_P(StartingWith, TextsOfFiveSymbols, ::testing::ValuesIn(kSymbols),
                         [](const auto& row) {
                           return "Byte" + std::to_string(static_cast<int>(row.param));
                         });

TEST(EmptyText, IsReadAlike) {
  expectAgreement("");
  expectAgreement("", true);
}

TEST(EveryByte, IsReadAlikeAtEveryPlaceOfAText) {
  const std::string text = "{\"k\\u0041\":[tru\ne,-1.5e+2,false , null],\"qztype\":\"int8\"}";
  for (std::size_t place = 0; place <= text.size(); ++place) {
    for (int byte = 0; byte < 256; byte += kFullEffort ? 1 : 3) {
      const char character = static_cast<char>(static_cast<unsigned char>(byte));
      std::string changed = text;
      changed.insert(place, 1, character);
      expectAgreement(changed);
      changed = text.substr(0, place) + character;
      expectAgreement(changed);
    }
  }
}

class TextsWithComments : public ::testing::TestWithParam<bool> {};

TEST_P(TextsWithComments, AreReadAlike) {
  const Parts symbols = bytesOf("/*],1\"\n ");
  Sequences(symbols, kFullEffort ? 6 : 4).forEach([&](const std::string& rest) {
    expectAgreement("[" + rest, GetParam());
  });
}

TEST_P(TextsWithComments, AreReadAlikeAtEveryPlaceOfAText) {
  const Parts pieces = {"[", "{", "\"k\"", ":", ",", "1", "]", "}"};
  const Parts comments = {"", "//", "// \n", "/**/", "/*/", "/", "/*\n*/ //\n\n"};
  const std::string start = "{\"qztype\"";
  for (const std::string& first : comments) {
    for (const std::string& second : comments) {
      for (const std::string& third : comments) {
        expectAgreement(start + first + ":" + second + "\"int8\"" + third + ",\"qzdata\":[1]}",
                        GetParam());
        expectAgreement(
            "{\"qzdata\"" + first + ":" + second + "[" + third + "1 ], \"qztype\":\"uint8\"}",
            GetParam());
        expectAgreement(
            "{\"qztype\":\"int8\",\"qzdata\":[" + first + "1" + second + "," + third + "-2]}",
            GetParam());
        expectAgreement(first + "[" + second + "{" + third + "}" + second + "]" + first,
                        GetParam());
        expectAgreement("{\"k\"" + first + ":" + second + "1" + third + ",\"l\":2}", GetParam());
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Comments, TextsWithComments, ::testing::Bool(),
                         [](const auto& row) { return row.param ? "Allowed" : "Forbidden"; });

// -------------------------------------------------------------------------------------------------
// Escapes

TEST(UnicodeEscapes, AreReadAlike) {
  const Parts tokens = {"\\u", "D83D", "dE00", "0041", "d8", "00", "\\", "u", "\"", "g", "\xC3"};
  Sequences(tokens, kFullEffort ? 5 : 3).forEach([&](const std::string& rest) {
    expectAgreement("\"\\u" + rest);
    expectAgreement("{\"\\uD83D" + rest + "\":1}");
  });
}

// -------------------------------------------------------------------------------------------------
// Objects

class ObjectBodies : public ::testing::TestWithParam<bool> {};

TEST_P(ObjectBodies, OfThreeTokensAreReadAlike) {
  const Parts tokens = {"\"qztype\":",
                        "\"qzdata\":",
                        "\"qztyp\\u0065\":",
                        "\"k\":",
                        "\"k\"",
                        "\"int64\"",
                        "\"uint8\"",
                        "\"int7\"",
                        "[",
                        "]",
                        "{",
                        "}",
                        ",",
                        ":",
                        "//\n",
                        "/*",
                        " ",
                        "true",
                        "nul",
                        "\"\\u00e9\\n",
                        "-",
                        "12345678901234567890123",
                        "-0.5e-3",
                        "[1,-2]"};
  Sequences(tokens, 3).forEach([&](const std::string& body) {
    expectAgreement("{" + body, GetParam());
    expectAgreement("{" + body + "}", GetParam());
    expectAgreement("{\"qztype\":\"int8\"," + body + "}", GetParam());
  });
}

INSTANTIATE_TEST_SUITE_P(Comments, ObjectBodies, ::testing::Bool(),
                         [](const auto& row) { return row.param ? "Allowed" : "Forbidden"; });

// Each member either changes the type or is a payload of a different form.
TEST(SequencesOfTypedMembers, AreReadAlike) {
  const Parts members = {"\"qztype\":\"int8\"",
                         "\"qztype\":\"uint64\"",
                         "\"qztype\":\"other\"",
                         "\"qztype\":5",
                         "\"qztype\":\"cut",
                         "\"qzdata\":[1,-2]",
                         "\"qzdata\":[18446744073709551615]",
                         "\"qzdata\":[1.5]",
                         "\"qzdata\":7",
                         "\"qzdata\":[]",
                         "\"qzdata\":{\"qztype\":\"int16\",\"qzdata\":[3]}",
                         "\"qzdata\":[{\"qzdata\":[4],\"qztype\":\"uint8\"}]",
                         "\"key\":{\"qztype\":[{}]}"};
  Sequences(members, kFullEffort ? 4 : 3, ",").forEach([&](const std::string& body) {
    expectAgreement("{" + body + "}");
    expectAgreement("[{" + body + "}");
    expectAgreement("{" + body.substr(0, body.size() - body.size() / 8));
  });
}

TEST(Payloads, AreReadAlikeBeforeAndAfterTheirType) {
  const Parts symbols = bytesOf("[],-09.e\"{ ");
  Sequences(symbols, kFullEffort ? 5 : 3).forEach([&](const std::string& payload) {
    expectAgreement("{\"qztype\":\"int8\",\"qzdata\":[" + payload);
    expectAgreement("{\"qzdata\":[" + payload + "],\"qztype\":\"uint8\"}");
  });
}

TEST(LongIntegers, AreReadAlike) {
  const Parts tokens = {"-",
                        "0",
                        "1",
                        "9",
                        "9223372036854775807",
                        "922337203685477580",
                        "18446744073709551615",
                        "1844674407370955161"};
  Sequences(tokens, 3).forEach([&](const std::string& integer) {
    for (const char* type : {"int32", "uint32", "none"}) {
      expectAgreement("{\"qztype\":\"" + std::string(type) + "\",\"qzdata\":[" + integer + "]}");
    }
  });
}

// -------------------------------------------------------------------------------------------------
// Longer texts

class RandomTexts : public ::testing::TestWithParam<std::uint64_t> {};

TEST_P(RandomTexts, AreReadAlike) {
  RandomJsonText texts(GetParam());
  for (int left = kFullEffort ? 25000 : 2500; left != 0 && !HasFatalFailure(); --left) {
    const std::string text = texts.next();
    expectAgreement(text);
    expectAgreement(text, true);
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTexts, ::testing::Range<std::uint64_t>(1, 9));

}  // namespace
}  // namespace foundation::json
