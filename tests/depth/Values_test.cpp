// Deeply nested values. All code that walks one runs in a thread whose stack is far too small for
// one frame per level.

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "json/ParseResult.h"
#include "support/Depth.h"
#include "support/JsonOutcome.h"

namespace foundation::json {
namespace {

using test_support::JsonOutcome;
using test_support::outcomeOf;
using test_support::repeated;
using test_support::runWithSmallStack;

const std::size_t kLevels = test_support::levels();

/// Texts of `kLevels` levels, built in steps that each open and close some of them.
struct Nesting {
  const char* name;
  std::string_view opening;
  std::string_view closing;
  std::size_t levels;       ///< opened by one step
  ParseResult noSeparator;  ///< if the last byte does not close a container

  std::size_t steps() const { return kLevels / levels; }
  std::string text(std::string_view innermost) const {
    return repeated(opening, steps()) + std::string(innermost) + repeated(closing, steps());
  }
};

void PrintTo(const Nesting& nesting, std::ostream* stream) {
  *stream << nesting.name;
}

// Counts the levels. Each level has one element or member; the innermost may have none.
std::size_t depthOf(Value value) {
  std::size_t depth = 0;
  for (;; ++depth) {
    if (value.is<Array>() && !value.as<Array>().empty()) {
      value = Value(value.as<Array>()[0]);
    } else if (value.is<Object>() && !value.as<Object>().empty()) {
      value = Value(value.as<Object>().begin()->second);
    } else {
      return depth;
    }
  }
}

class DeepText : public ::testing::TestWithParam<Nesting> {
 protected:
  // Asserts that a text is rejected.
  static void expectRejection(const std::string& text, ParseResult code, std::size_t offset) {
    JsonOutcome outcome;
    runWithSmallStack([&] { outcome = outcomeOf(text); });
    EXPECT_EQ(std::make_tuple(outcome.kind, outcome.code, outcome.offset, outcome.column),
              std::make_tuple(JsonOutcome::Kind::kParserException, code, offset, offset + 1));
  }
};

constexpr Nesting kNestings[] = {
    {"Arrays", "[", "]", 1, kNoArraySeparator},
    {"Objects", "{\"k\":", "}", 1, kNoObjectSeparator},
    {"Mixed", "[{\"k\":", "}]", 2, kNoArraySeparator},
    {"UntypedPayloads", "{\"qzdata\":", "}", 1, kNoObjectSeparator},
    {"WithOtherElements", "[[{\"k\":", "}],2]", 3, kNoArraySeparator},
    {"WithSpace", " [\t {\"\\u006B\" : ", " }\t]", 2, kNoArraySeparator},
};
INSTANTIATE_TEST_SUITE_P(Nestings, DeepText, ::testing::ValuesIn(kNestings),
                         [](const auto& row) { return row.param.name; });

TEST_P(DeepText, IsReadCopiedComparedAndDestroyed) {
  // White space may not precede the outermost value.
  const std::string inner = GetParam().text("\"leaf\"");
  const std::string text = "[" + inner + "]";
  std::size_t depth = 0;
  bool equal = false;
  bool differs = false;
  runWithSmallStack([&] {
    Value value = parseJsonText(text);
    Value copy = value;
    const Value other = parseJsonText(text);
    equal = copy == value && copy == other;
    differs = value != parseJsonText("[" + GetParam().text("\"Leaf\"") + "]");
    Value moved = std::move(value);
    copy = Value();
    depth = depthOf(moved);
    value = std::move(moved);
  });
  EXPECT_EQ(std::make_tuple(depth, equal, differs),
            std::make_tuple(GetParam().steps() * GetParam().levels + 1, true, true));
}

TEST_P(DeepText, HasPartsThatOutliveIt) {
  const std::string text = "[" + GetParam().text("1") + "]";
  std::size_t depth = 0;
  runWithSmallStack([&] {
    Value part;
    {
      const Value whole = parseJsonText(text);
      part = whole.as<Array>()[0];
    }
    depth = depthOf(part);
  });
  EXPECT_EQ(depth, GetParam().steps() * GetParam().levels);
}

TEST_P(DeepText, IsRejectedIfItIsCutOff) {
  const std::string text = "[" + GetParam().text("1");
  const std::string start = "[" + repeated(GetParam().opening, GetParam().steps());
  expectRejection(start, kEndOfText, start.size());
  expectRejection(text, kEndOfText, text.size());
  expectRejection(text.substr(0, text.size() - 1), kEndOfText, text.size() - 1);
}

TEST_P(DeepText, IsRejectedIfItsLastByteIsWrong) {
  std::string text = "[" + GetParam().text("1");
  text.back() = ':';
  expectRejection(text, GetParam().noSeparator, text.size() - 1);
}

TEST_P(DeepText, IsRejectedIfItsInnermostValueIsWrong) {
  const std::string start = "[" + repeated(GetParam().opening, GetParam().steps());
  expectRejection("[" + GetParam().text("tru") + "]", kNoOpeningQuote, start.size());
}

TEST_P(DeepText, IsRejectedIfSomethingFollows) {
  const std::string text = "[" + GetParam().text("1") + "]";
  expectRejection(text + "]", kSuccess, text.size());
}

// -------------------------------------------------------------------------------------------------
// Types and payloads

TEST(DeepTypes, AreNotStrings) {
  const std::string start = repeated("{\"qztype\":", kLevels);
  std::string messages;
  runWithSmallStack([&] {
    for (const char* innermost : {"", "5", "\"int8\"}", "[]"}) {
      const JsonOutcome outcome = outcomeOf(start + innermost);
      messages += outcome.kind == JsonOutcome::Kind::kRuntimeError ? outcome.message : "?";
      messages += '\n';
    }
  });
  EXPECT_EQ(messages,
            "invalid conversion: undefined to string\n"
            "invalid conversion: double to string\n"
            "invalid conversion: object to string\n"
            "invalid conversion: array to string\n");
}

TEST(DeepPayloads, AreReadWithTheTypeOfTheirObject) {
  std::size_t depth = 0;
  runWithSmallStack([&] {
    const std::string opening = "{\"qztype\":\"none\",\"k\":";
    const Value value =
        parseJsonText(repeated(opening, kLevels) + "{\"qzdata\":[1],\"qztype\":\"int8\"}" +
                      repeated(",\"qzdata\":[2],\"qztype\":\"uint8\"}", kLevels));
    Value current = value;
    while (current.is<Object>() && current["qzdata"] == Value(Array{Value(std::uint64_t{2})})) {
      ++depth;
      current = Value(current["k"]);
    }
    depth += current["qzdata"] == Value(Array{Value(std::int64_t{1})}) ? 1u : 0u;
  });
  EXPECT_EQ(depth, kLevels + 1);
}

// -------------------------------------------------------------------------------------------------
// Values built by hand

Value arraysAround(Value value) {
  for (std::size_t level = 0; level != kLevels; ++level) {
    std::vector<Value> elements;
    elements.push_back(std::move(value));
    value = Array(std::move(elements));
  }
  return value;
}

Value objectsAround(Value value) {
  for (std::size_t level = 0; level != kLevels; ++level) {
    std::vector<std::pair<std::string, Value>> members;
    members.emplace_back("k", std::move(value));
    value = Object(std::move(members));
  }
  return value;
}

struct Making {
  const char* name;
  Value (*around)(Value);
};

void PrintTo(const Making& making, std::ostream* stream) {
  *stream << making.name;
}

class DeepValue : public ::testing::TestWithParam<Making> {};

INSTANTIATE_TEST_SUITE_P(MadeByHand, DeepValue,
                         ::testing::Values(Making{"Arrays", arraysAround},
                                           Making{"Objects", objectsAround}),
                         [](const auto& row) { return row.param.name; });

TEST_P(DeepValue, IsCopiedComparedAndDestroyed) {
  std::size_t depth = 0;
  bool equal = false;
  bool differs = false;
  runWithSmallStack([&] {
    Value value = GetParam().around("leaf");
    const Value copy = value;
    equal = copy == value && value == GetParam().around("leaf");
    differs = value != GetParam().around("Leaf");
    depth = depthOf(copy);
    value = nullptr;
  });
  EXPECT_EQ(std::make_tuple(depth, equal, differs), std::make_tuple(kLevels, true, true));
}

TEST_P(DeepValue, LosesItsOuterHalfWhileAPartIsKept) {
  std::size_t depth = 0;
  runWithSmallStack([&] {
    const Value part = GetParam().around("leaf");
    Value whole = GetParam().around(part);
    whole = Value();
    depth = depthOf(part);
  });
  EXPECT_EQ(depth, kLevels);
}

TEST_P(DeepValue, MayContainADeepText) {
  std::size_t depth = 0;
  runWithSmallStack([&] {
    const std::string text = repeated("[", kLevels) + repeated("]", kLevels);
    const Value value = GetParam().around(parseJsonText(text));
    depth = depthOf(value);
  });
  // The innermost of the text's arrays is empty.
  EXPECT_EQ(depth, 2 * kLevels - 1);
}

TEST(SharedValues, AreDestroyedOnceHoweverManyTimesTheyOccur) {
  Value value = "leaf";
  runWithSmallStack([&] {
    for (int level = 0; level != 10000; ++level) {
      value = Array{value, value};
    }
  });
  EXPECT_EQ(depthOf(value), 10000u);
  runWithSmallStack([&] { value = Value(); });
  EXPECT_TRUE(value.is<Undefined>());
}

}  // namespace
}  // namespace foundation::json
