#include "diagnosis/SyntaxAdvice.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <system_error>

#include "diagnosis/Notation.h"
#include "diagnosis/Text.h"
#include "diagnosis/Words.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using source::SyntaxFault;

constexpr std::size_t kLongestWord = 40;

char byteAt(std::string_view text, std::size_t offset) {
  return offset < text.size() ? text[offset] : '\0';
}

bool isExpected(const SyntaxFault& fault, std::string_view what) {
  return fault.why.find(what) != std::string_view::npos;
}

// --- the encoding -----------------------------------------------------------------------------

struct Encoding {
  std::string_view beginning;
  const char* name;
};

// UTF-32 begins like UTF-16, followed by zeros.
constexpr Encoding kEncodings[] = {
    {std::string_view("\xFF\xFE\0\0", 4), "UTF-32"},
    {std::string_view("\0\0\xFE\xFF", 4), "UTF-32"},
    {std::string_view("{\0\0\0", 4), "UTF-32"},
    {std::string_view("\0\0\0{", 4), "UTF-32"},
    {"\xFF\xFE", "UTF-16"},
    {"\xFE\xFF", "UTF-16"},
    {std::string_view("{\0", 2), "UTF-16"},
    {std::string_view("\0{", 2), "UTF-16"},
};

std::optional<KnownMistake> findEncoding(std::string_view text) {
  for (const auto& [beginning, name] : kEncodings) {
    if (startsWith(text, beginning)) {
      return KnownMistake{0, beginning.size(), std::string("the file must be UTF-8, not ") + name,
                          "save it as UTF-8 without a byte-order mark"};
    }
  }
  return std::nullopt;
}

// --- quotation marks --------------------------------------------------------------------------

std::optional<KnownMistake> findQuote(std::string_view text, std::size_t offset) {
  for (const std::string_view quote : kCurlyQuotes) {
    if (startsWith(text.substr(offset), quote)) {
      return KnownMistake{offset, quote.size(),
                          "a curly or angled quotation mark cannot start a string",
                          "put names and strings in straight double quotation marks (\")",
                          rewriteNotation(text, offset)};
    }
  }
  const char byte = byteAt(text, offset);
  if (byte == '\'' || byte == '`') {
    return KnownMistake{offset, 1, std::string("a string cannot start with ") + byte,
                        "put strings in double quotation marks", rewriteNotation(text, offset)};
  }
  return std::nullopt;
}

// --- words ------------------------------------------------------------------------------------

std::string lowered(std::string_view text) {
  std::string small(text);
  std::transform(small.begin(), small.end(), small.begin(), toLowerCase);
  return small;
}

std::string adviseOnWord(std::string_view word) {
  const std::string small = lowered(word);
  if (const char* const meant = findMeantWord(small)) {
    return std::string("write ") + meant;
  }
  if (small == "nan" || small == "infinity" || small == "inf") {
    return "write a number: JSON has no " + std::string(word);
  }
  return "put strings in double quotation marks; the only other words are true, false and null";
}

// A word without quotation marks, in which the fault can be at the first or a later byte.
std::optional<KnownMistake> findWord(std::string_view text, const SyntaxFault& fault) {
  std::size_t begin = fault.offset;
  if (!isOfWord(text[begin])) {
    return std::nullopt;
  }
  while (begin > 0 && fault.offset - begin < kLongestWord && isOfWord(text[begin - 1])) {
    --begin;
  }
  const std::size_t most = std::min(text.size(), begin + 2 * kLongestWord);
  std::size_t end = begin;
  while (end < most && isOfWord(text[end])) {
    ++end;
  }
  if (begin == end || !isLetter(text[begin])) {
    return std::nullopt;
  }
  const std::string_view word = text.substr(begin, end - begin);
  if (byteAt(text, source::skipSpace(text, end)) == ':') {
    return KnownMistake{begin, word.size(), "the name " + quote(word) + " has no quotation marks",
                        "put names in double quotation marks", rewriteNotation(text, begin)};
  }
  if (begin == fault.offset && !isExpected(fault, "value") && !isExpected(fault, "digit")) {
    return std::nullopt;  // a value comes before this word
  }
  return KnownMistake{begin, word.size(), quote(word) + " is not a JSON value", adviseOnWord(word),
                      rewriteNotation(text, begin)};
}

// --- what follows a number --------------------------------------------------------------------

bool isUnit(std::string_view word) {
  const std::string small = lowered(word);
  const auto isOne = [&small](std::string_view unit) { return small == unit; };
  constexpr std::string_view kUnits[] = {"b",   "byte", "bytes", "k",   "kb", "kib", "m",  "mb",
                                         "mib", "g",    "gb",    "gib", "t",  "tb",  "tib"};
  return std::any_of(std::begin(kUnits), std::end(kUnits), isOne);
}

std::string adviseOnHexadecimal(std::string_view digits) {
  std::uint64_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number, 16);
  return error == std::errc() && stop == end ? "write it in decimal: " + std::to_string(number)
                                             : "write it in decimal";
}

std::optional<KnownMistake> findTailOfNumber(std::string_view text, const SyntaxFault& fault) {
  const std::size_t offset = fault.offset;
  std::size_t behind = offset;  // the number
  while (behind > 0 &&
         std::string_view(" \t\r\n").find(text[behind - 1]) != std::string_view::npos) {
    --behind;
  }
  const char byte = byteAt(text, offset);
  const bool isSeparated = behind != offset;
  if (isDigit(byte) && offset > 1 && text[offset - 1] == ',' && isDigit(text[offset - 2])) {
    return KnownMistake{offset - 1, 1, "the digits of this number are grouped with ','",
                        "write the number without separators"};
  }
  if (behind == 0 || !isDigit(text[behind - 1])) {
    return std::nullopt;
  }
  std::size_t end = offset;
  while (end < text.size() && end - offset < kLongestWord && isOfWord(text[end])) {
    ++end;
  }
  const std::string_view word = text.substr(offset, end - offset);
  if (!isSeparated && (byte == 'x' || byte == 'X') && word.size() > 1) {
    return KnownMistake{offset - 1, word.size() + 1, "JSON has no hexadecimal numbers",
                        adviseOnHexadecimal(word.substr(1))};
  }
  if (!isSeparated && byte == '_') {
    return KnownMistake{offset, 1, "the digits of this number are grouped with '_'",
                        "write the number without separators"};
  }
  if (isUnit(word)) {
    return KnownMistake{offset, word.size(), "the number is followed by a unit, " + quote(word),
                        "write the number of bytes, without a unit"};
  }
  return std::nullopt;
}

std::optional<KnownMistake> findPunctuation(std::string_view text, const SyntaxFault& fault) {
  const char byte = byteAt(text, fault.offset);
  if (byte == '=' && isExpected(fault, "':'")) {
    const std::size_t length = byteAt(text, fault.offset + 1) == '>' ? 2 : 1;
    return KnownMistake{
        fault.offset, length,
        "a name and its value are separated by " + quote(text.substr(fault.offset, length)),
        "write ':' between a name and its value", Fix{fault.offset, length, ":", false}};
  }
  if (byte == ';' && isExpected(fault, "','")) {
    return KnownMistake{fault.offset, 1, "two values are separated by ';'",
                        "write ',' between two values, and nothing after the last one",
                        Fix{fault.offset, 1, ",", false}};
  }
  return std::nullopt;
}

std::string adviseOnPunctuation(std::string_view text, const SyntaxFault& fault) {
  const char byte = text[fault.offset];
  const std::size_t before = text.substr(0, fault.offset).find_last_not_of(" \t\r\n");
  const char previous = before == std::string_view::npos ? '\0' : text[before];
  if (byte == previous && byte == ',') {
    return "remove one of the two commas";
  }
  if (isExpected(fault, "':'")) {
    return std::string_view(",}]").find(byte) != std::string_view::npos
               ? "write ':' and a value after this name"
               : "write ':' between the name and its value";
  }
  if (byte == ']' && isExpected(fault, "'}'")) {
    return "remove this ']', or close the '{' before it";
  }
  if (byte == '}' && isExpected(fault, "']'")) {
    return "remove this '}', or close the '[' before it";
  }
  return "correct the text here or just before";
}

}  // namespace

std::optional<KnownMistake> findKnownMistake(std::string_view text, const SyntaxFault& fault) {
  if (fault.isInEscape || fault.isInPayload || fault.isTypeNotString) {
    return std::nullopt;
  }
  if (std::optional<KnownMistake> encoding = findEncoding(text)) {
    return encoding;
  }
  if (fault.offset >= text.size()) {
    return std::nullopt;
  }
  if (isExpected(fault, "value")) {
    if (std::optional<KnownMistake> quote = findQuote(text, fault.offset)) {
      return quote;
    }
  }
  if (std::optional<KnownMistake> tail = findTailOfNumber(text, fault)) {
    return tail;
  }
  if (std::optional<KnownMistake> mark = findPunctuation(text, fault)) {
    return mark;
  }
  return findWord(text, fault);
}

std::string adviseOnSyntax(std::string_view text, std::size_t begin, const SyntaxFault& fault) {
  if (text.empty()) {
    return "write a document to the file, which is empty";
  }
  if (source::skipSpace(text, begin) == text.size()) {
    return "write a document to the file, which contains only white space";
  }
  if (fault.offset >= text.size()) {
    return "complete the text, which ends inside a string, an array or an object";
  }
  if (fault.isInEscape) {
    return "write a backslash as \\\\; an escape is a backslash and one of \" \\ / b f n r t, or u "
           "with "
           "four hexadecimal digits, in pairs for characters beyond \\uffff";
  }
  const char byte = text[fault.offset];
  if (byte == '+' || byte == '.') {
    return "start the number with a digit or a minus sign";
  }
  return adviseOnPunctuation(text, fault);
}

bool hasCurlyQuote(std::string_view text) {
  return std::any_of(kCurlyQuotes.begin(), kCurlyQuotes.end(), [text](std::string_view quote) {
    return text.find(quote) != std::string_view::npos;
  });
}

}  // namespace install::update_metadata_parser::diagnosis
