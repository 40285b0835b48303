#include "json/JsonText.h"

#include <stdexcept>
#include <string_view>
#include <utility>

#include "json/ParserException.h"
#include "json/TextReader.h"
#include "json/TreeBuilder.h"

namespace foundation::json {

Value parseJsonText(std::string text, bool allowComments) {
  TreeBuilder builder(std::move(text));
  const std::string_view stored = builder.text();
  const char* const begin = stored.data();
  const char* const end = begin + stored.size();
  const ReadOutcome outcome = TextReader(begin, end, allowComments, builder).read();
  if (outcome.kindOfType != nullptr) {
    throw std::runtime_error(std::string("invalid conversion: ") + outcome.kindOfType + " to " +
                             traits<std::string>::name);
  }
  if (outcome.code != kSuccess) {
    throw ParserException(begin, outcome.position, end, outcome.code,
                          get_parse_result_description(outcome.code));
  }
  if (outcome.position != end) {
    throw ParserException(begin, outcome.position, end, kSuccess, kParseIncomplete);
  }
  return builder.finish();
}

}  // namespace foundation::json
