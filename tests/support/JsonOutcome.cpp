#include "support/JsonOutcome.h"

#include <exception>
#include <ostream>
#include <stdexcept>
#include <typeinfo>

#include "json/JsonText.h"
#include "json/ParserException.h"
#include "support/NaiveJsonReader.h"
#include "support/ValueText.h"

namespace test_support {
namespace {

using foundation::json::ParserException;

template <class Read>
JsonOutcome outcomeOfReading(const Read& read) {
  JsonOutcome outcome;
  try {
    outcome.value = read();
    outcome.kind = JsonOutcome::Kind::kValue;
  } catch (const ParserException& error) {
    outcome.kind = JsonOutcome::Kind::kParserException;
    outcome.code = error.code();
    outcome.offset = error.offset();
    outcome.line = error.line();
    outcome.column = error.column();
    outcome.context = error.context();
    outcome.message = error.what();
  } catch (const std::exception& error) {
    if (typeid(error) == typeid(std::runtime_error)) {
      outcome.kind = JsonOutcome::Kind::kRuntimeError;
    }
    outcome.message = error.what();
  }
  return outcome;
}

}  // namespace

bool operator==(const JsonOutcome& left, const JsonOutcome& right) {
  return left.kind == right.kind && left.code == right.code && left.offset == right.offset &&
         left.line == right.line && left.column == right.column && left.context == right.context &&
         left.message == right.message && left.value == right.value &&
         (left.kind != JsonOutcome::Kind::kValue ||
          valueText(left.value) == valueText(right.value));
}

std::ostream& operator<<(std::ostream& stream, const JsonOutcome& outcome) {
  switch (outcome.kind) {
    case JsonOutcome::Kind::kValue:
      return stream << "value " << valueText(outcome.value);
    case JsonOutcome::Kind::kParserException:
      return stream << "code " << outcome.code << " at offset " << outcome.offset << ", line "
                    << outcome.line << ", column " << outcome.column << ", context "
                    << quoted(outcome.context) << ", message " << quoted(outcome.message);
    case JsonOutcome::Kind::kRuntimeError:
      return stream << "std::runtime_error " << quoted(outcome.message);
    case JsonOutcome::Kind::kOther:
      break;
  }
  return stream << "another exception " << quoted(outcome.message);
}

JsonOutcome outcomeOf(const std::string& text, bool allowComments) {
  return outcomeOfReading([&] { return foundation::json::parseJsonText(text, allowComments); });
}

JsonOutcome naiveOutcomeOf(const std::string& text, bool allowComments) {
  return outcomeOfReading([&] { return naiveParseJsonText(text, allowComments); });
}

}  // namespace test_support
