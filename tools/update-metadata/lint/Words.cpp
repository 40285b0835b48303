#include "lint/Words.h"

namespace update_metadata_tool {
namespace {

constexpr std::size_t kLongestQuote = 60;

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace

std::string quote(std::string_view name) {
  if (name.size() <= kLongestQuote) {
    return '\'' + std::string(name) + '\'';
  }
  std::size_t end = kLongestQuote;
  while (end > kLongestQuote - 4 && isContinuation(name[end])) {
    --end;
  }
  return '\'' + std::string(name.substr(0, end)) + "...'";
}

const char* describeKind(SourceKind kind) {
  switch (kind) {
    case SourceKind::kNull:
      return "null";
    case SourceKind::kBoolean:
      return "true or false";
    case SourceKind::kNumber:
    case SourceKind::kInteger:
      return "a number";
    case SourceKind::kArray:
      return "an array";
    case SourceKind::kObject:
      return "an object";
    case SourceKind::kString:
    case SourceKind::kKey:
      break;
  }
  return "a string";
}

std::string describeComponent(std::string_view component) {
  return "component " + quote(component);
}

std::string describeProduct(std::string_view product) {
  return "product " + quote(product);
}

std::string describePackage(std::string_view package, const char* what,
                            std::string_view component) {
  return "package " + quote(package) + ' ' + what + " of component " + quote(component);
}

}  // namespace update_metadata_tool
