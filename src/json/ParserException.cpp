#include "json/ParserException.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace foundation::json {
namespace {

constexpr std::ptrdiff_t kMaxContextBytes = 80;  // on each side of the error
constexpr std::size_t kCodeDigits = 4;

std::string padded(ParseResult code) {
  std::string digits = std::to_string(code);
  if (digits.size() < kCodeDigits) {
    digits.insert(0, kCodeDigits - digits.size(), '0');
  }
  return digits;
}

}  // namespace

ParserException::ParserException(const char* begin, const char* position, const char* end,
                                 ParseResult code, std::string_view description)
    : ParserException(get_location_info(begin, position, end),
                      static_cast<std::uint64_t>(position - begin), code, description) {}

ParserException::ParserException(const LocationInfo& location, std::uint64_t offset,
                                 ParseResult code, std::string_view description)
    : std::runtime_error(format(location, code, description)),
      code_(code),
      offset_(offset),
      line_(std::get<0>(location)),
      column_(std::get<1>(location)),
      context_(std::make_shared<const std::string>(std::get<2>(location))) {}

ParserException::LocationInfo ParserException::get_location_info(const char* begin,
                                                                 const char* position,
                                                                 const char* end) {
  const auto lineFeeds = std::count(begin, position, '\n');
  const auto before = std::make_reverse_iterator(position);
  const char* const lineStart = std::find(before, std::make_reverse_iterator(begin), '\n').base();
  const std::ptrdiff_t caret = std::min(position - lineStart, kMaxContextBytes);
  const char* const contextLimit = position + std::min(end - position, kMaxContextBytes);
  const char* const contextStart = position - caret;
  const char* const contextEnd = std::find(contextStart, contextLimit, '\n');
  return {static_cast<std::uint64_t>(lineFeeds) + 1,
          static_cast<std::uint64_t>(position - lineStart) + 1,
          std::string(contextStart, contextEnd), static_cast<std::uint64_t>(caret)};
}

std::string ParserException::format_message(const char* begin, const char* position,
                                            const char* end, ParseResult code,
                                            std::string_view description) {
  return format(get_location_info(begin, position, end), code, description);
}

std::string ParserException::format(const LocationInfo& location, ParseResult code,
                                    std::string_view description) {
  const auto& [line, column, context, caret] = location;
  std::string message = "JSON ParserException (E" + padded(code) + "): ";
  message += description;
  message += " (Line " + std::to_string(line) + ", Column " + std::to_string(column) + ")";
  message += "\n\t" + context;
  message += "\n\t" + std::string(static_cast<std::size_t>(caret), ' ') + "^";
  return message;
}

}  // namespace foundation::json
