#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>

#include "json/ParseResult.h"

namespace foundation::json {

/// The description for a text in which something follows the value; the code is then kSuccess.
constexpr const char* kParseIncomplete = "Parse incomplete";

/// Reports that a text is not one JSON value, where, and why.
///
/// The message contains the result code, its description, line and column, and shows the offending
/// line with a caret under the offending byte. Copies share the context line: copying throws
/// nothing.
class ParserException : public std::runtime_error {
 public:
  /// The location of an error: its line and its column in bytes, both from 1; the part of the line
  /// around it; and how many bytes of that part precede it.
  using LocationInfo = std::tuple<std::uint64_t, std::uint64_t, std::string, std::uint64_t>;

  /// Describes the failure to read the text from `begin` to `end` at `position`.
  ///
  /// \pre begin <= position <= end
  ParserException(const char* begin, const char* position, const char* end, ParseResult code,
                  std::string_view description);

  /// Moving copies, so that no exception is ever without its context.
  ParserException(const ParserException&) noexcept = default;

  /// Like copying.
  ParserException& operator=(const ParserException&) noexcept = default;

  /// What is wrong; 0 if a value was read but something follows it.
  ParseResult code() const noexcept { return code_; }

  /// Offset of the error in bytes from the start of the text, from 0.
  std::uint64_t offset() const noexcept { return offset_; }

  /// Line of the error, from 1. Only a line feed ends a line.
  std::uint64_t line() const noexcept { return line_; }

  /// Column of the error in bytes, from 1.
  std::uint64_t column() const noexcept { return column_; }

  /// The error's line: at most 80 bytes before the error and 80 starting at it. It may contain a
  /// NUL byte, which truncates the message as what() returns it.
  const std::string& context() const noexcept { return *context_; }

  /// Finds the location of `position` in the text from `begin` to `end`. Linear in the number of
  /// bytes before it.
  static LocationInfo get_location_info(const char* begin, const char* position, const char* end);

  /// Composes the message for an error at `position` in the text from `begin` to `end`:
  ///
  ///     JSON ParserException (E0018): description (Line 3, Column 9)
  ///     <tab>the line around the error
  ///     <tab>        ^
  static std::string format_message(const char* begin, const char* position, const char* end,
                                    ParseResult code, std::string_view description);

 private:
  ParserException(const LocationInfo& location, std::uint64_t offset, ParseResult code,
                  std::string_view description);

  static std::string format(const LocationInfo& location, ParseResult code,
                            std::string_view description);

  ParseResult code_;
  std::uint64_t offset_;
  std::uint64_t line_;
  std::uint64_t column_;
  std::shared_ptr<const std::string> context_;
};

}  // namespace foundation::json
