#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fl/i18n.h"
#include "foundation/core/compiler.h"
#include "foundation/json/Value.h"
#include "json/ParseResult.h"
#include "json/TypedPayloads.h"
#include "json/TypedValues.h"
#include "json/scan/Conversions.h"
#include "json/scan/DigitScan.h"
#include "json/scan/StringDecoding.h"
#include "json/scan/StringScan.h"
#include "json/scan/Whitespace.h"

namespace foundation::json {

/// The result of reading one value.
struct ReadOutcome {
  ParseResult code;      ///< kSuccess, or what is wrong
  const char* position;  ///< after the value, or at the first byte that was not accepted

  /// If a "qztype" member is not a string: the name of its kind, or "undefined" if it could not be
  /// read. Otherwise null. Such a member ends the reading whatever the code.
  const char* kindOfType;
};

/// The one reader of JSON text. It reports what it reads to a sink and stores no values itself.
///
/// The kind of the next value follows from its first byte, and the purpose of an open container is
/// stored with it in the sink. So there is no recursion, and nothing is read twice except typed
/// payloads. `Sink` provides what TreeBuilder does: addNull(), addBoolean(), addNumber(),
/// addInteger(), addStringOfText(), addString(), open(), noteOfInnermost(), closeArray(),
/// closeObject(), and lastPlace(), last(), lastTypeName(), lastIsString(), lastString(), takeLast()
/// and replace() with its type Kept. Keys are added as strings before their values. beginKey(),
/// beginValue() and end() report where in the text the next key or value begins and where the one
/// just added ends, for a sink that records places.
///
/// If the reading fails, the sink's content is invalid, except for the places: up to the failure
/// they are those of a text that continues correctly. A payload may then be reported a second time,
/// after the other members of its object.
template <class Sink>
class TextReader {
 public:
  /// Reads from `begin`, at most up to `end`, into `sink`.
  TextReader(const char* begin, const char* end, bool allowComments, Sink& sink)
      : begin_(begin), end_(end), allowComments_(allowComments), sink_(sink) {}

  /// Reads one value. To be called once.
  ReadOutcome read();

 private:
  // The kind and the purpose of an open container: its note in the sink.
  using Frame = std::uint8_t;
  static constexpr Frame kObject = 1;          // otherwise an array
  static constexpr Frame kValueOfType = 2;     // it is the value of a "qztype" member
  static constexpr Frame kValueOfPayload = 4;  // it is the value of a "qzdata" member

  // Reading functions take the position and return the new one, or null after a failure; outcome_
  // then contains its code and position.
  FOUNDATION_NOINLINE const char* fail(ParseResult code, const char* position) {
    outcome_ = {code, position, nullptr};
    return nullptr;
  }

  const char* skip(const char* position) const {
    return skipWhitespace(position, end_, allowComments_);
  }

  // The frequent paths are inlined into one function.
  FOUNDATION_ALWAYS_INLINE inline const char* readValue(const char* position);
  FOUNDATION_ALWAYS_INLINE inline const char* continueAfterValue(const char* position);
  FOUNDATION_ALWAYS_INLINE inline const char* open(const char* position, Frame kind);
  FOUNDATION_ALWAYS_INLINE inline const char* close(const char* position);
  FOUNDATION_ALWAYS_INLINE inline const char* parseKey(const char* position);

  FOUNDATION_ALWAYS_INLINE inline const char* parseString(const char* position);
  FOUNDATION_ALWAYS_INLINE inline const char* parseNumber(const char* position);
  template <class Add>
  const char* matchLiteral(const char* position, std::string_view word, Add add);

  // The rare paths are separate functions, so that the frequent code stays short.
  FOUNDATION_NOINLINE const char* beginSpecialMember(const char* position);
  FOUNDATION_NOINLINE const char* finishSpecialMember(const char* position);
  FOUNDATION_NOINLINE const char* finishEscapedString(const char* begin, const char* position);
  FOUNDATION_NOINLINE const char* finishNumber(const char* begin, const char* position);

  const char* begin_;
  const char* end_;
  bool allowComments_;
  Sink& sink_;
  ReadOutcome outcome_{kSuccess, nullptr, nullptr};

  std::size_t depth_ = 0;       // how many containers are open
  Frame pending_ = 0;           // the kind of special member that the current value belongs to
  bool isPayloadRead_ = false;  // the current value is a typed payload and has been read
  // Inside a container that is the value of a "qztype" member; its end ends the reading.
  bool isInType_ = false;
  std::string decoded_;  // the bytes of the last string with escapes
  TypedPayloads<Sink> payloads_;
};

template <class Sink>
ReadOutcome TextReader<Sink>::read() {
  const char* position = begin_;
  do {
    position = readValue(position);
  } while (position != nullptr);
  if (outcome_.code != kSuccess && (isInType_ || pending_ == kValueOfType)) {
    outcome_.kindOfType = traits<Undefined>::name;
  }
  return outcome_;
}

// Reads a whole scalar or empty container and what follows it, or enters a container. Returns where
// the next value begins, or null if there is none.
template <class Sink>
const char* TextReader<Sink>::readValue(const char* position) {
  if (isPayloadRead_) {
    isPayloadRead_ = false;
    return continueAfterValue(position);
  }
  if (position == end_) {
    return fail(kEndOfText, position);
  }
  sink_.beginValue(position);
  switch (*position) {
    case '"':
      position = parseString(position);
      break;
    case '{':
      position = open(position, kObject);
      if (position != nullptr && *position != '}') {
        return parseKey(position);
      }
      position = position == nullptr ? nullptr : close(position);
      break;
    case '[':
      position = open(position, 0);
      if (position != nullptr && *position != ']') {
        return position;
      }
      position = position == nullptr ? nullptr : close(position);
      break;
    case 't':
      position = matchLiteral(position, "true", [&] { sink_.addBoolean(true); });
      break;
    case 'f':
      position = matchLiteral(position, "false", [&] { sink_.addBoolean(false); });
      break;
    case 'n':
      position = matchLiteral(position, "null", [&] { sink_.addNull(); });
      break;
    default:
      position = parseNumber(position);
  }
  return position == nullptr ? nullptr : continueAfterValue(position);
}

// Continues after a value: closes the containers that end here, and returns where the next value
// begins.
template <class Sink>
const char* TextReader<Sink>::continueAfterValue(const char* position) {
  for (;;) {
    sink_.end(position);
    if (pending_ != 0) {
      position = finishSpecialMember(position);
      if (position == nullptr) {
        return nullptr;
      }
    }
    if (depth_ == 0) {
      outcome_ = {kSuccess, position, nullptr};
      return nullptr;
    }
    const bool isObject = (sink_.noteOfInnermost() & kObject) != 0;
    position = skip(position);
    if (position == end_) {
      return fail(kEndOfText, position);
    }
    if (*position == ',') {
      position = skip(position + 1);
      return isObject ? parseKey(position) : position;
    }
    if (*position != (isObject ? '}' : ']')) {
      return fail(isObject ? kNoObjectSeparator : kNoArraySeparator, position);
    }
    position = close(position);
  }
}

// Skips an opening bracket or brace and the white space after it.
template <class Sink>
const char* TextReader<Sink>::open(const char* position, Frame kind) {
  sink_.open(static_cast<Frame>(kind | pending_));
  ++depth_;
  isInType_ = isInType_ || pending_ == kValueOfType;
  pending_ = 0;
  position = skip(position + 1);
  return position == end_ ? fail(kEndOfText, position) : position;
}

// Skips the closing bracket or brace of the innermost container.
template <class Sink>
const char* TextReader<Sink>::close(const char* position) {
  const Frame frame = sink_.noteOfInnermost();
  if ((frame & kObject) != 0) {
    payloads_.leaveObject(depth_);
    sink_.closeObject();
  } else {
    sink_.closeArray();
  }
  --depth_;
  pending_ = frame & (kValueOfType | kValueOfPayload);
  return position + 1;
}

// Reads a key and the colon after it.
template <class Sink>
const char* TextReader<Sink>::parseKey(const char* position) {
  if (position == end_) {
    return fail(kEndOfText, position);
  }
  if (*position != '"') {
    return fail(kNoOpeningQuote, position);
  }
  sink_.beginKey(position);
  position = parseString(position);
  if (position == nullptr) {
    return nullptr;
  }
  sink_.end(position);
  position = skip(position);
  if (position == end_) {
    return fail(kEndOfText, position);
  }
  if (*position != ':') {
    return fail(kNoColon, position);
  }
  position = skip(position + 1);
  const std::string_view key = sink_.lastString();
  static_assert(kTypeKey.size() == kPayloadKey.size());
  return key.size() == kTypeKey.size() ? beginSpecialMember(position) : position;
}

// Records a special member if the last key is one of the two. The payload of an object whose type
// is known is read as a whole.
template <class Sink>
const char* TextReader<Sink>::beginSpecialMember(const char* position) {
  const std::string_view key = sink_.lastString();
  if (key == kTypeKey) {
    pending_ = kValueOfType;
  } else if (key == kPayloadKey) {
    pending_ = kValueOfPayload;
    const std::string_view typeName = payloads_.beginPayload(depth_, position);
    if (!typeName.empty()) {
      isPayloadRead_ = true;
      const ParseResult code = readTypedPayload(typeName, position, end_, allowComments_, sink_);
      return code == kSuccess ? position : fail(code, position);
    }
  }
  return position;
}

template <class Sink>
const char* TextReader<Sink>::finishSpecialMember(const char* position) {
  const bool isType = pending_ == kValueOfType;
  pending_ = 0;
  if (!isType) {
    payloads_.endPayload(sink_);
    return position;
  }
  if (!sink_.lastIsString()) {
    outcome_ = {kSuccess, position, sink_.lastTypeName()};
    return nullptr;
  }
  const ParseResult code =
      payloads_.setType(depth_, sink_.lastString(), position, end_, allowComments_, sink_);
  return code == kSuccess ? position : fail(code, position);
}

// A literal that does not match is reported as a missing string: both fail at the first byte, and
// strings are tried first.
template <class Sink>
template <class Add>
const char* TextReader<Sink>::matchLiteral(const char* position, std::string_view word, Add add) {
  const auto left = static_cast<std::size_t>(end_ - position);
  if (left < word.size() || std::memcmp(position, word.data(), word.size()) != 0) {
    return fail(kNoOpeningQuote, position);
  }
  add();
  return position + word.size();
}

template <class Sink>
const char* TextReader<Sink>::parseString(const char* position) {
  const char* const begin = position + 1;
  position = findQuoteOrBackslash(begin, end_);
  if (position == end_ || *position != '"') {
    return finishEscapedString(begin, position);
  }
  sink_.addStringOfText({begin, static_cast<std::size_t>(position - begin)});
  return position + 1;
}

// Continues at the first backslash of a string, or at the end of the text.
template <class Sink>
const char* TextReader<Sink>::finishEscapedString(const char* begin, const char* position) {
  decoded_.assign(begin, position);
  if (const ParseResult code = decodeString(position, end_, decoded_); code != kSuccess) {
    return fail(code, position);
  }
  sink_.addString(std::move(decoded_));
  return position;
}

template <class Sink>
const char* TextReader<Sink>::parseNumber(const char* position) {
  const char* const begin = position;
  const bool negative = *position == '-';
  if (negative && ++position == end_) {
    return fail(kEndOfText, position);
  }
  const char* const digits = position;
  std::uint64_t integer = 0;
  position = readDigits(position, end_, integer);
  if (position == digits) {
    // Without a minus sign this is not a number, and strings are tried first.
    return fail(negative ? kNoDigit : kNoOpeningQuote, position);
  }
  // Every integer of up to 19 digits fits, and its conversion is correctly rounded.
  constexpr std::ptrdiff_t kExactDigits = 19;
  if (position - digits > kExactDigits ||
      (position != end_ && (*position == '.' || *position == 'e' || *position == 'E'))) {
    return finishNumber(begin, position);
  }
  const auto number = static_cast<double>(integer);
  sink_.addNumber(negative ? -number : number);
  return position;
}

// Continues after the integral digits of a number.
template <class Sink>
const char* TextReader<Sink>::finishNumber(const char* begin, const char* position) {
  using fl::i18n::lcctype::isdigit_ascii;
  const auto skipDigits = [&] {
    while (position != end_ && isdigit_ascii(*position)) {
      ++position;
    }
  };
  if (position != end_ && *position == '.') {
    ++position;
    if (position == end_) {
      return fail(kEndOfText, position);
    }
    if (!isdigit_ascii(*position)) {
      return fail(kNoFractionDigit, position);
    }
    skipDigits();
  }
  if (position != end_ && (*position == 'e' || *position == 'E')) {
    ++position;
    if (position != end_ && (*position == '+' || *position == '-')) {
      ++position;
    }
    if (position == end_) {
      return fail(kEndOfText, position);
    }
    if (!isdigit_ascii(*position)) {
      return fail(kNoExponentDigit, position);
    }
    skipDigits();
  }
  sink_.addNumber(detail::string_to_double({begin, static_cast<std::size_t>(position - begin)}));
  return position;
}

}  // namespace foundation::json
