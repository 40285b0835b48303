#pragma once

#include <cstdint>
#include <string_view>

#include "fl/i18n.h"
#include "json/ParseResult.h"
#include "json/scan/Whitespace.h"

namespace foundation::json {

/// The key of the member that names the integer type of its object's payload.
constexpr std::string_view kTypeKey = "qztype";

/// The key of the payload, an array of integers of that type.
constexpr std::string_view kPayloadKey = "qzdata";

/// Returns `name`, in static memory, if it is one of the eight names of integer types, "int8" to
/// "uint64"; otherwise an empty text.
std::string_view knownTypeName(std::string_view name) noexcept;

/// Whether a type name belongs to the signed group. The width in a name is not applied: elements
/// are signed or unsigned 64-bit integers.
bool isSignedType(std::string_view name) noexcept;

/// Converts the digits of an integer to the nearest signed 64-bit value.
std::int64_t toSaturatedInt64(std::string_view digits, bool negative) noexcept;

/// Converts the digits of an integer to the nearest unsigned 64-bit value; a negative one is 0.
std::uint64_t toSaturatedUint64(std::string_view digits, bool negative) noexcept;

/// Reads one element of a payload: an optional minus sign and digits; a zero has no further digits.
///
/// Advances `position` past the digits or, on failure, to the first byte that is not accepted.
ParseResult readInteger(const char*& position, const char* end, std::string_view& digits,
                        bool& negative) noexcept;

/// Reads a payload as an array of signed or unsigned 64-bit integers into `sink`: open(),
/// addInteger() for each element, closeArray(). Reports where the array begins, and where each
/// element begins and ends.
///
/// Advances `position` past the closing bracket or, on failure, to the first byte that is not
/// accepted; the sink's content is then invalid. Returns kEndOfText, without reading, for a name
/// that is not one of the eight.
template <class Sink>
ParseResult readTypedPayload(std::string_view typeName, const char*& position, const char* end,
                             bool allowComments, Sink& sink) {
  if (knownTypeName(typeName).empty() || position == end) {
    return kEndOfText;
  }
  if (*position != '[') {
    return kNoOpeningBracket;
  }
  sink.beginValue(position);
  ++position;
  const bool isSigned = isSignedType(typeName);
  const auto skip = [&] { position = skipWhitespace(position, end, allowComments); };
  sink.open();
  skip();
  if (position != end && *position == ']') {
    ++position;
    sink.closeArray();
    return kSuccess;
  }
  while (position != end) {
    std::string_view digits;
    bool negative = false;
    sink.beginValue(position);
    if (const ParseResult result = readInteger(position, end, digits, negative);
        result != kSuccess) {
      return result;
    }
    const char* const digitsEnd = position;
    skip();
    if (position == end) {
      break;
    }
    if (isSigned) {
      sink.addInteger(toSaturatedInt64(digits, negative));
    } else {
      sink.addInteger(toSaturatedUint64(digits, negative));
    }
    sink.end(digitsEnd);
    if (*position == ']') {
      ++position;
      sink.closeArray();
      return kSuccess;
    }
    if (*position != ',') {
      return kNoArraySeparator;
    }
    ++position;
    skip();
  }
  return kEndOfText;
}

}  // namespace foundation::json
