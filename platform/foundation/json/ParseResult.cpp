#include "foundation/json/ParseResult.h"

namespace foundation::json {

const char* get_parse_result_description(ParseResult result) noexcept {
  switch (result) {
#define FOUNDATION_JSON_CASE(NAME, NUMBER, DESCRIPTION) \
  case NAME:                                            \
    return DESCRIPTION;
    FOUNDATION_JSON_PARSE_RESULTS(FOUNDATION_JSON_CASE)
#undef FOUNDATION_JSON_CASE
    default:
      return "Unknown parse result";
  }
}

}  // namespace foundation::json
