#pragma once

#include <string>
#include <string_view>

#include "foundation/json/Value.h"
#include "json/ParseResult.h"

namespace test_support {

/// Reads strings, numbers and literals of JSON text in the most literal way.
///
/// Every operation leaves `position` after what it read or, on failure, at the byte that it did not
/// accept. Only a literal does not move it on failure.
class NaiveScalarReader {
 public:
  explicit NaiveScalarReader(const char* end) : end_(end) {}

  foundation::json::ParseResult parseStringValue(const char*& position,
                                                 foundation::json::Value& result) const;
  foundation::json::ParseResult parseString(const char*& position, std::string& text) const;
  foundation::json::ParseResult parseNumber(const char*& position,
                                            foundation::json::Value& result) const;
  foundation::json::ParseResult parseBoolean(const char*& position,
                                             foundation::json::Value& result) const;
  foundation::json::ParseResult parseNull(const char*& position,
                                          foundation::json::Value& result) const;

 protected:
  const char* end_;

 private:
  foundation::json::ParseResult parseUnicodeEscape(const char*& position, std::string& text) const;
  static bool parseUnit(const char*& position, std::u16string& units);
  foundation::json::ParseResult parseDigits(const char*& position,
                                            foundation::json::ParseResult failCode) const;
  foundation::json::ParseResult matchLiteral(const char*& position, std::string_view word,
                                             foundation::json::ParseResult failCode) const;
};

}  // namespace test_support
