#include "support/ValueText.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

namespace test_support {
namespace {

using namespace foundation::json;

template <class Number>
std::string numberText(Number number) {
  std::array<char, 64> characters{};
  const auto result =
      std::to_chars(characters.data(), characters.data() + characters.size(), number);
  return {characters.data(), result.ptr};
}

template <class Number>
std::string namedNumberText(Number number) {
  return std::string(traits<Number>::name) + "(" + numberText(number) + ")";
}

std::string arrayText(const Array& array) {
  std::string text = "[";
  for (const Value& element : array) {
    text += (text.size() == 1 ? "" : ", ") + valueText(element);
  }
  return text + "]";
}

std::string objectText(const Object& object) {
  std::string text = "{";
  for (const auto& [key, value] : object) {
    text += (text.size() == 1 ? "" : ", ") + quoted(key) + ": " + valueText(value);
  }
  return text + "}";
}

}  // namespace

std::string quoted(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text = "\"";
  for (const char byte : bytes) {
    if (byte >= ' ' && byte <= '~' && byte != '"' && byte != '\\') {
      text += byte;
    } else {
      const auto number = static_cast<unsigned char>(byte);
      text += "\\x";
      text += kDigits[number / 16];
      text += kDigits[number % 16];
    }
  }
  return text + "\"";
}

std::string valueText(const Value& value) {
  switch (value.index()) {
    case traits<bool>::index:
      return value.as<bool>() ? "true" : "false";
    case traits<double>::index:
      return numberText(value.as<double>());
    case traits<std::string>::index:
      return quoted(value.as<std::string_view>());
    case traits<Array>::index:
      return arrayText(value.as<Array>());
    case traits<Object>::index:
      return objectText(value.as<Object>());
    case traits<float>::index:
      return namedNumberText(value.as<float>());
    case traits<std::int64_t>::index:
      return namedNumberText(value.as<std::int64_t>());
    case traits<std::uint64_t>::index:
      return namedNumberText(value.as<std::uint64_t>());
    default:
      return value.typeName();
  }
}

}  // namespace test_support
