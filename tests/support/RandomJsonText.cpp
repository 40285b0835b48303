#include "support/RandomJsonText.h"

#include <algorithm>

namespace test_support {
namespace {

constexpr std::size_t kMaxDepth = 5;

constexpr std::string_view kTypeNames[] = {
    "\"int64\"",       "\"uint64\"", "\"int8\"",   "\"uint16\"",
    "\"\\u0069nt32\"", "\"Int8\"",   "\"double\"", "\"\""};

constexpr std::string_view kKeys[] = {"\"\"",         "\"a\"",     "\"\\u0061\"", "\"b\"",
                                      "\"\xC3\xA9\"", "\"qzdat\"", "\"QZTYPE\"",  "\"a\\n\""};

constexpr std::string_view kStringPieces[] = {"a",         "some text",
                                              "\\n",       "\\\"",
                                              "\\\\",      "\\/",
                                              "\\u0041",   "\\u00e9",
                                              "\\uFFFF",   "\\uD83D\\uDE00",
                                              "\\uDE00",   "\\uD83D\\u0041",
                                              "\\uD83D",   "\\u0000",
                                              "\n",        "\t",
                                              "\xF0\x9F",  "[{,:}]",
                                              "// no \n",  "/* no */",
                                              "\x7F",      "\\ud800\\udbff",
                                              "\xFF",      "0123456789abcdef01234567",
                                              "\\b\\f\\r", "\\t and so"};

constexpr std::string_view kSpaces[] = {" ",         "\n",       "\t",   "\r\n",   "\v\f",
                                        "// line\n", "/* in */", "/**/", "/*/ */", "//\n"};

constexpr std::string_view kFragments[] = {"\"",
                                           "\\",
                                           "\\u",
                                           "{",
                                           "}",
                                           "[",
                                           "]",
                                           ",",
                                           ":",
                                           "-",
                                           ".",
                                           "e",
                                           "0",
                                           "1",
                                           "+",
                                           " ",
                                           "\n",
                                           "/",
                                           "*",
                                           "//",
                                           "/*",
                                           "*/",
                                           "true",
                                           "fals",
                                           "null",
                                           "nul",
                                           "\"qztype\":",
                                           "\"qzdata\":",
                                           "\"int8\"",
                                           "\"uint8\"",
                                           "\"qztype\":\"int8\",",
                                           "\"qzdata\":[1],",
                                           "\xC3",
                                           "\x80"};

}  // namespace

std::string RandomJsonText::next() {
  text_.clear();
  addValue(0);
  if (!oneIn(4)) {
    for (std::size_t count = 1 + below(3); count != 0; --count) {
      change();
    }
  }
  return text_;
}

void RandomJsonText::addValue(std::size_t depth) {
  const std::size_t kind = below(depth == kMaxDepth ? 4 : depth == 0 ? 16 : 8);
  if (kind == 0) {
    addString();
  } else if (kind <= 2) {
    addNumber();
  } else if (kind == 3) {
    constexpr std::string_view kLiterals[] = {"true", "false", "null"};
    text_ += oneOf(kLiterals);
  } else {
    const bool isObject = kind % 2 == 0;
    text_ += isObject ? '{' : '[';
    addSpace();
    for (std::size_t left = below(5); left != 0; --left) {
      if (isObject) {
        addMember(depth + 1);
      } else {
        addValue(depth + 1);
      }
      addSpace();
      if (left != 1) {
        text_ += ',';
        addSpace();
      }
    }
    text_ += isObject ? '}' : ']';
  }
}

void RandomJsonText::addMember(std::size_t depth) {
  const std::size_t kind = below(6);
  text_ += kind < 2   ? (oneIn(8) ? "\"qztyp\\u0065\"" : "\"qztype\"")
           : kind < 4 ? (oneIn(8) ? "\"\\u0071zdata\"" : "\"qzdata\"")
                      : oneOf(kKeys);
  addSpace();
  text_ += ':';
  addSpace();
  if (kind < 2 && !oneIn(20)) {
    text_ += oneOf(kTypeNames);
  } else if (kind < 4 && !oneIn(6)) {
    addIntegers();
  } else {
    addValue(depth);
  }
}

void RandomJsonText::addIntegers() {
  text_ += '[';
  addSpace();
  for (std::size_t left = below(5); left != 0; --left) {
    if (oneIn(3)) {
      text_ += '-';
    }
    if (oneIn(4)) {
      text_ += '0';
    } else {
      text_ += static_cast<char>('1' + below(9));
      addDigits();
    }
    addSpace();
    if (left != 1) {
      text_ += ',';
      addSpace();
    }
  }
  text_ += ']';
}

void RandomJsonText::addNumber() {
  if (oneIn(3)) {
    text_ += '-';
  }
  text_ += static_cast<char>('0' + below(10));
  addDigits();
  if (oneIn(3)) {
    text_ += '.';
    text_ += static_cast<char>('0' + below(10));
    addDigits();
  }
  if (oneIn(3)) {
    constexpr std::string_view kMarkers[] = {"e", "E", "e+", "E-", "e-"};
    text_ += oneOf(kMarkers);
    text_ += static_cast<char>('0' + below(10));
    if (oneIn(2)) {
      text_ += static_cast<char>('0' + below(10));
      text_ += static_cast<char>('0' + below(10));
    }
  }
}

void RandomJsonText::addDigits() {
  for (std::size_t left = oneIn(3) ? below(26) : below(3); left != 0; --left) {
    text_ += static_cast<char>('0' + below(10));
  }
}

void RandomJsonText::addString() {
  text_ += '"';
  for (std::size_t left = below(5); left != 0; --left) {
    text_ += oneOf(kStringPieces);
  }
  text_ += '"';
}

void RandomJsonText::addSpace() {
  if (oneIn(6)) {
    text_ += oneOf(kSpaces);
  }
}

void RandomJsonText::change() {
  const std::size_t place = below(text_.size() + 1);
  const std::size_t length = 1 + below(4);
  switch (below(6)) {
    case 0:
      text_.erase(place, length);
      break;
    case 1:
      text_.insert(place, oneOf(kFragments));
      break;
    case 2:
      text_.replace(place, 1, oneOf(kFragments));
      break;
    case 3:
      text_.insert(below(text_.size() + 1), text_.substr(place, length * 8));
      break;
    case 4:
      if (place != text_.size()) {
        text_[place] = static_cast<char>(static_cast<unsigned char>(below(256)));
      }
      break;
    default:
      if (oneIn(3)) {
        text_.resize(place);
      } else {
        text_.insert(place, 1, ' ');
      }
      break;
  }
}

}  // namespace test_support
