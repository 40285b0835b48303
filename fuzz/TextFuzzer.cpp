// Any text as JSON: read, copied, walked and destroyed. Failures report the right place.

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>
#include <vector>

#include "Fuzzer.h"
#include "Require.h"
#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "json/ParseResult.h"
#include "json/ParserException.h"

namespace {

using foundation::json::Array;
using foundation::json::Member;
using foundation::json::Object;
using foundation::json::ParserException;
using foundation::json::Value;
using fuzz::require;

// Touches every value and every byte of every string, without recursion. Returns a sum, so that the
// compiler cannot skip anything.
std::size_t walk(const Value& root) {
  std::size_t sum = 0;
  const auto touch = [&sum](std::string_view text) {
    sum += static_cast<std::size_t>(std::count(text.begin(), text.end(), 'a'));
  };
  std::vector<const Value*> waiting = {&root};
  while (!waiting.empty()) {
    const Value& value = *waiting.back();
    waiting.pop_back();
    ++sum;
    if (value.is<Array>()) {
      const Array array = value.as<Array>();
      for (const Value& element : array) {
        waiting.push_back(&element);
      }
    } else if (value.is<Object>()) {
      const Object object = value.as<Object>();
      const Member* former = nullptr;
      for (const Member& member : object) {
        require(former == nullptr || former->first < member.first, "keys are out of order");
        former = &member;
        touch(member.first);
        require(&value[member.first] == &member.second, "a member is not found");
        waiting.push_back(&member.second);
      }
    } else if (value.is<std::string>()) {
      touch(value.as<std::string_view>());
    }
  }
  return sum;
}

void checkPlace(const std::string& text, const ParserException& failure) {
  require(failure.offset() <= text.size(), "the place is beyond the text");
  const std::string_view before = std::string_view(text).substr(0, failure.offset());
  const std::size_t lineFeed = before.rfind('\n');
  const std::size_t lineStart = lineFeed == std::string_view::npos ? 0 : lineFeed + 1;
  require(failure.line() ==
              1 + static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n')),
          "wrong line");
  require(failure.column() == 1 + before.size() - lineStart, "wrong column");
  require(failure.context().size() <= 160, "the context is too long");
  require(failure.context().find('\n') == std::string::npos, "the context spans lines");
  require(std::string_view(failure.what()).substr(0, 25) == "JSON ParserException (E00",
          "wrong message");
}

void read(const std::string& text, bool allowComments) {
  try {
    Value value = foundation::json::parseJsonText(text, allowComments);
    const Value copy = value;
    require(copy == value, "a copy differs");
    const std::size_t sum = walk(value);
    value = Value();
    require(walk(copy) == sum, "a copy changes when its original is destroyed");
  } catch (const ParserException& failure) {
    checkPlace(text, failure);
  } catch (const std::runtime_error& failure) {
    const std::string_view message = failure.what();
    require(typeid(failure) == typeid(std::runtime_error) &&
                message.substr(0, 20) == "invalid conversion: " &&
                message.substr(message.size() - 10) == " to string",
            "an exception of another kind");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  read(text, false);
  if (text.find('/') != std::string::npos) {
    read(text, true);
  }
  return 0;
}
