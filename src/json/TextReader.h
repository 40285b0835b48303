#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "fl/i18n.h"
#include "foundation/json/ParseResult.h"
#include "foundation/json/Value.h"
#include "foundation/json/detail.h"
#include "json/StringDecoding.h"
#include "json/StringScan.h"
#include "json/TypedPayloads.h"
#include "json/TypedValues.h"
#include "json/Whitespace.h"

namespace foundation::json {

/// How the reading of one value ended.
struct ReadOutcome {
  ParseResult code;      ///< kSuccess, or what is wrong
  const char* position;  ///< behind the value, or at the first byte that was not accepted

  /// If a "qztype" member is not a string: the name of the kind that it is, undefined if it could
  /// not be read. Null otherwise. Such a member ends the reading whatever the code.
  const char* kindOfType;
};

/// The one reader of JSON text. It tells a sink what it reads and keeps no values itself.
///
/// The next value's kind follows from its first byte, and open containers wait on a stack of one
/// byte each: no recursion, and nothing is read twice but typed payloads. `Sink` offers what
/// TreeBuilder does: addNull(), addBoolean(), addNumber(), addInteger(), addStringOfText(),
/// addString(), open(), closeArray(), closeObject(), and lastPlace(), last(), takeLast() and
/// replace() with its type Kept. Keys come as strings before their values. What a sink was given is
/// void if the reading fails.
template <class Sink>
class TextReader {
 public:
  /// Reads from `begin` at most to `end`, into `sink`.
  TextReader(const char* begin, const char* end, bool allowComments, Sink& sink)
      : begin_(begin), end_(end), allowComments_(allowComments), sink_(sink) {}

  /// Reads one value. To be called once.
  ReadOutcome read();

 private:
  // What an open container's place is and what it is for: one byte of the stack.
  using Frame = std::uint8_t;
  static constexpr Frame kObject = 1;          // else an array
  static constexpr Frame kValueOfType = 2;     // it is the value of a "qztype" member
  static constexpr Frame kValueOfPayload = 4;  // it is the value of a "qzdata" member

  // Reading functions take the position and return the new one, or null after a failure, whose code
  // and position stand in outcome_ then.
  const char* fail(ParseResult code, const char* position) {
    outcome_ = {code, position, nullptr};
    return nullptr;
  }

  const char* skip(const char* position) const {
    return skipWhitespace(position, end_, allowComments_);
  }

  const char* parseValue(const char* position);
  const char* parseString(const char* position, std::string_view& string);
  const char* parseNumber(const char* position);
  template <class Add>
  const char* matchLiteral(const char* position, std::string_view word, const char* kind, Add add);
  const char* openContainer(const char* position, Frame kind);
  const char* continueContainer(const char* position);
  const char* parseMember(const char* position);
  void closeContainer();

  const char* finishSpecialMember(const char* position);

  const char* begin_;
  const char* end_;
  bool allowComments_;
  Sink& sink_;
  ReadOutcome outcome_{kSuccess, nullptr, nullptr};

  std::vector<Frame> frames_;   // the open containers, the innermost last
  bool complete_ = false;       // the value last begun is finished, not an open container
  Frame pending_ = 0;           // if the value at hand is that of a special member: which
  std::size_t openTypes_ = 0;   // open containers that are the value of a "qztype" member
  const char* kind_ = nullptr;  // name of the kind of the value last finished, for a "qztype"
  std::string_view string_;     // the string last read
  std::string decoded_;         // its bytes, if it has escapes
  TypedPayloads<Sink> payloads_;
};

template <class Sink>
ReadOutcome TextReader<Sink>::read() {
  const char* position = begin_;
  for (;;) {
    position = parseValue(position);
    while (position != nullptr && complete_) {
      if (pending_ != 0) {
        position = finishSpecialMember(position);
        if (position == nullptr) {
          break;
        }
      }
      if (frames_.empty()) {
        return {kSuccess, position, nullptr};
      }
      position = continueContainer(position);
    }
    if (position == nullptr) {
      if (openTypes_ != 0 && outcome_.kindOfType == nullptr) {
        outcome_.kindOfType = traits<Undefined>::name;
      }
      return outcome_;
    }
  }
}

// Reads a scalar or an empty container whole, or opens a container: complete_ tells which.
template <class Sink>
const char* TextReader<Sink>::parseValue(const char* position) {
  complete_ = true;
  const char* next = nullptr;
  if (position == end_) {
    fail(kEndOfText, position);
  } else {
    switch (*position) {
      case '"':
        kind_ = traits<std::string>::name;
        next = parseString(position, string_);
        break;
      case '{':
        next = openContainer(position, kObject);
        break;
      case '[':
        next = openContainer(position, 0);
        break;
      case 't':
        next = matchLiteral(position, "true", traits<bool>::name, [&] { sink_.addBoolean(true); });
        break;
      case 'f':
        next =
            matchLiteral(position, "false", traits<bool>::name, [&] { sink_.addBoolean(false); });
        break;
      case 'n':
        next =
            matchLiteral(position, "null", traits<std::nullptr_t>::name, [&] { sink_.addNull(); });
        break;
      default:
        kind_ = traits<double>::name;
        next = parseNumber(position);
    }
  }
  if (next == nullptr && pending_ == kValueOfType) {
    outcome_.kindOfType = traits<Undefined>::name;
  }
  return next;
}

// A literal that does not match is reported as the string that is not there either: neither gets
// beyond the first byte, and strings are tried first.
template <class Sink>
template <class Add>
const char* TextReader<Sink>::matchLiteral(const char* position, std::string_view word,
                                           const char* kind, Add add) {
  const auto left = static_cast<std::size_t>(end_ - position);
  if (left < word.size() || std::memcmp(position, word.data(), word.size()) != 0) {
    return fail(kNoOpeningQuote, position);
  }
  kind_ = kind;
  add();
  return position + word.size();
}

// Reads a string, adds it to the sink and tells its bytes, which stay until the next string is
// read.
template <class Sink>
const char* TextReader<Sink>::parseString(const char* position, std::string_view& string) {
  const char* const first = position + 1;
  position = findQuoteOrBackslash(first, end_);
  if (position == end_) {
    return fail(kEndOfText, position);
  }
  if (*position == '"') {
    string = {first, static_cast<std::size_t>(position - first)};
    sink_.addStringOfText(string);
    return position + 1;
  }
  decoded_.assign(first, position);
  if (const ParseResult code = decodeString(position, end_, decoded_); code != kSuccess) {
    return fail(code, position);
  }
  string = decoded_;
  sink_.addString(string);
  return position;
}

template <class Sink>
const char* TextReader<Sink>::parseNumber(const char* position) {
  using fl::i18n::lcctype::isdigit_ascii;
  const char* const begin = position;
  const bool negative = *position == '-';
  if (negative && ++position == end_) {
    return fail(kEndOfText, position);
  }
  if (!isdigit_ascii(*position)) {
    // Without a minus sign this is no number at all, and strings are tried first.
    return fail(negative ? kNoDigit : kNoOpeningQuote, position);
  }
  const char* const digits = position;
  std::uint64_t integer = 0;  // wraps round beyond the digits that it is used for
  do {
    integer = integer * 10 + static_cast<std::uint64_t>(*position - '0');
    ++position;
  } while (position != end_ && isdigit_ascii(*position));
  // Every integer of up to 19 digits fits, and its conversion is correctly rounded.
  constexpr std::ptrdiff_t kExactDigits = 19;
  const bool isShortInteger =
      position - digits <= kExactDigits &&
      (position == end_ || (*position != '.' && *position != 'e' && *position != 'E'));
  if (isShortInteger) {
    const auto number = static_cast<double>(integer);
    sink_.addNumber(negative ? -number : number);
    return position;
  }
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

// Steps over an opening bracket or brace and to what follows: the first element, the first member's
// value, or, behind the closing one, the end of the empty container.
template <class Sink>
const char* TextReader<Sink>::openContainer(const char* position, Frame kind) {
  const bool isObject = kind == kObject;
  frames_.push_back(static_cast<Frame>(kind | pending_));
  openTypes_ += pending_ == kValueOfType ? 1 : 0;
  pending_ = 0;
  sink_.open();
  position = skip(position + 1);
  if (position == end_) {
    return fail(kEndOfText, position);
  }
  if (*position == (isObject ? '}' : ']')) {
    closeContainer();
    return position + 1;
  }
  complete_ = false;
  return isObject ? parseMember(position) : position;
}

template <class Sink>
void TextReader<Sink>::closeContainer() {
  const Frame frame = frames_.back();
  if ((frame & kObject) != 0) {
    payloads_.leaveObject(frames_.size());
    sink_.closeObject();
    kind_ = traits<Object>::name;
  } else {
    sink_.closeArray();
    kind_ = traits<Array>::name;
  }
  frames_.pop_back();
  pending_ = frame & (kValueOfType | kValueOfPayload);
  openTypes_ -= pending_ == kValueOfType ? 1 : 0;
  complete_ = true;
}

// Goes on in the innermost container, behind one of its values: to the next value, or behind the
// container's end.
template <class Sink>
const char* TextReader<Sink>::continueContainer(const char* position) {
  const bool isObject = (frames_.back() & kObject) != 0;
  position = skip(position);
  if (position == end_) {
    return fail(kEndOfText, position);
  }
  if (*position == ',') {
    complete_ = false;
    position = skip(position + 1);
    return isObject ? parseMember(position) : position;
  }
  if (*position == (isObject ? '}' : ']')) {
    closeContainer();
    return position + 1;
  }
  return fail(isObject ? kNoObjectSeparator : kNoArraySeparator, position);
}

// Reads a key and the colon behind it. The payload of a typed object is read whole as well.
template <class Sink>
const char* TextReader<Sink>::parseMember(const char* position) {
  if (position == end_) {
    return fail(kEndOfText, position);
  }
  if (*position != '"') {
    return fail(kNoOpeningQuote, position);
  }
  std::string_view key;
  position = parseString(position, key);
  if (position == nullptr) {
    return nullptr;
  }
  position = skip(position);
  if (position == end_) {
    return fail(kEndOfText, position);
  }
  if (*position != ':') {
    return fail(kNoColon, position);
  }
  position = skip(position + 1);
  if (key == kTypeKey) {
    pending_ = kValueOfType;
  } else if (key == kPayloadKey) {
    pending_ = kValueOfPayload;
    const std::string_view typeName = payloads_.beginPayload(frames_.size(), position);
    if (!typeName.empty()) {
      complete_ = true;
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
  if (kind_ != traits<std::string>::name) {
    outcome_ = {kSuccess, position, kind_};
    return nullptr;
  }
  const ParseResult code =
      payloads_.setType(frames_.size(), string_, position, end_, allowComments_, sink_);
  return code == kSuccess ? position : fail(code, position);
}

}  // namespace foundation::json
