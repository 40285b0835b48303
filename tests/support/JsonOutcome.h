#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "foundation/json/Value.h"
#include "json/ParseResult.h"

namespace test_support {

/// The outcome of reading a text: a value, or an exception of exactly one of two types.
struct JsonOutcome {
  enum class Kind { kValue, kParserException, kRuntimeError, kOther };

  Kind kind = Kind::kOther;
  foundation::json::Value value = {};
  foundation::json::ParseResult code = 0;
  std::uint64_t offset = 0;
  std::uint64_t line = 0;
  std::uint64_t column = 0;
  std::string context = {};
  std::string message = {};
};

/// Compares everything, numbers by their bits.
bool operator==(const JsonOutcome& left, const JsonOutcome& right);
std::ostream& operator<<(std::ostream& stream, const JsonOutcome& outcome);

/// Reads a text with foundation::json::parseJsonText().
JsonOutcome outcomeOf(const std::string& text, bool allowComments = false);

/// Reads a text with naiveParseJsonText().
JsonOutcome naiveOutcomeOf(const std::string& text, bool allowComments = false);

}  // namespace test_support
