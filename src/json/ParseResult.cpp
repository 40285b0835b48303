#include "json/ParseResult.h"

namespace foundation::json {

#define FOUNDATION_JSON_CASE(NAME, NUMBER, DESCRIPTION) \
  case NAME:                                            \
    return DESCRIPTION;

const char* get_parse_result_description(ParseResult result) noexcept {
  switch (result) {
    FOUNDATION_JSON_PARSE_RESULTS(FOUNDATION_JSON_CASE)
    default:
      return "Unknown parse result";
  }
}

#undef FOUNDATION_JSON_CASE

}  // namespace foundation::json
