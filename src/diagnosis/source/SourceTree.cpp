#include "diagnosis/source/SourceTree.h"

#include <algorithm>
#include <initializer_list>

#include "diagnosis/source/SourceBuilder.h"
#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "json/ParseResult.h"
#include "json/ParserException.h"
#include "json/TextReader.h"
#include "json/scan/Conversions.h"
#include "json/scan/StringDecoding.h"
#include "json/scan/Whitespace.h"
#include "reader/NumberConversion.h"

namespace install::update_metadata_parser::diagnosis::source {
namespace {

namespace json = foundation::json;

SyntaxFault describeTypeNotString(const char* kind, std::size_t offset) {
  const std::string message =
      std::string("invalid conversion: ") + kind + " to " + json::traits<std::string>::name;
  return {json::kSuccess, offset, false, false, false, true, message, "Expected a string"};
}

bool isOneOf(int code, std::initializer_list<int> codes) {
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

SyntaxFault describe(std::string_view text, const json::ReadOutcome& outcome, bool isInPayload) {
  const char* const begin = text.data();
  const char* const why = outcome.code == json::kSuccess
                              ? json::kParseIncomplete
                              : json::get_parse_result_description(outcome.code);
  return {outcome.code,
          static_cast<std::size_t>(outcome.position - begin),
          isOneOf(outcome.code, {json::kBadEscape, json::kBadUnicodeEscape}),
          isOneOf(outcome.code, {json::kNoDigit, json::kNoFractionDigit, json::kNoExponentDigit}),
          isInPayload,
          false,
          json::ParserException::format_message(begin, outcome.position, begin + text.size(),
                                                outcome.code, why),
          why};
}

// Whether the reading of an array of integers ended with `code`. The code for text that is neither
// comma nor bracket also occurs in other arrays.
bool isOfPayload(int code, const SourceBuilder& builder) {
  return code == json::kNoOpeningBracket || code == json::kNoInteger ||
         (code == json::kNoArraySeparator && builder.isLastInteger());
}

}  // namespace

const char* nameOf(SourceKind kind) {
  switch (kind) {
    case SourceKind::kNull:
      return json::traits<std::nullptr_t>::name;
    case SourceKind::kBoolean:
      return json::traits<bool>::name;
    case SourceKind::kNumber:
      return json::traits<double>::name;
    case SourceKind::kInteger:
      return json::traits<std::int64_t>::name;
    case SourceKind::kArray:
      return json::traits<json::Array>::name;
    case SourceKind::kObject:
      return json::traits<json::Object>::name;
    case SourceKind::kString:
    case SourceKind::kKey:
      break;
  }
  return json::traits<std::string>::name;
}

SourceTree::SourceTree(std::string_view text, std::size_t begin, bool allowComments) : text_(text) {
  const char* const start = text.data();
  SourceBuilder builder(start);
  json::TextReader reader(start + begin, start + text.size(), allowComments, builder);
  const json::ReadOutcome outcome = reader.read();
  const auto offset = static_cast<std::size_t>(outcome.position - start);
  if (outcome.kindOfType != nullptr) {
    const bool isRead = outcome.code == json::kSuccess;
    fault_ = describeTypeNotString(outcome.kindOfType, isRead ? builder.lastBegin() : offset);
  } else if (outcome.code != json::kSuccess || offset != text.size()) {
    fault_ = describe(text, outcome, isOfPayload(outcome.code, builder));
  }
  if (fault_) {
    builder.breakOff(offset);
  }
  nodes_ = builder.takeNodes();
}

std::string SourceTree::decoded(std::size_t index) const {
  std::string buffer;
  return std::string(decodedInto(index, buffer));
}

std::string_view SourceTree::decodedInto(std::size_t index, std::string& buffer) const {
  std::string_view inside = written(index);
  inside.remove_prefix(1);
  if (!nodes_[index].hasEscapes) {
    inside.remove_suffix(1);
    return inside;
  }
  const std::size_t plain = inside.find('\\');
  buffer.assign(inside.substr(0, plain));
  const char* position = inside.data() + plain;
  json::decodeString(position, inside.data() + inside.size(), buffer);
  return buffer;
}

double SourceTree::number(std::size_t index) const {
  return json::detail::string_to_double(written(index));
}

std::int64_t SourceTree::byteCount(std::size_t index) const {
  return toByteCount(number(index));
}

int SourceTree::updateLevel(std::size_t index) const {
  return toIntUpdateLevel(number(index));
}

std::size_t skipSpace(std::string_view text, std::size_t offset, bool andComments) {
  const char* const end = text.data() + text.size();
  return static_cast<std::size_t>(json::skipWhitespace(text.data() + offset, end, andComments) -
                                  text.data());
}

std::u16string readAsText(std::string_view bytes) {
  return fl::i18n::to_ustring(bytes);
}

}  // namespace install::update_metadata_parser::diagnosis::source
