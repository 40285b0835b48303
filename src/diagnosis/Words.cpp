#include "diagnosis/Words.h"

#include <algorithm>
#include <vector>

#include "diagnosis/Text.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using source::SourceKind;

constexpr std::size_t kLongestQuote = 60;

// A name in a pointer, its escapes resolved.
std::string nameOfToken(std::string_view token) {
  std::string name(token);
  for (std::size_t at = name.find('~'); at < name.size(); at = name.find('~', at + 1)) {
    name.replace(at, 2, 1, name[at + 1] == '1' ? '/' : '~');
  }
  return name;
}

// The names in a pointer, at most the first four.
std::vector<std::string> firstNames(std::string_view pointer) {
  constexpr std::size_t kMost = 4;
  std::vector<std::string> names;
  while (!pointer.empty() && names.size() != kMost) {
    pointer.remove_prefix(1);
    const std::size_t end = std::min(pointer.find('/'), pointer.size());
    names.push_back(nameOfToken(pointer.substr(0, end)));
    pointer.remove_prefix(end);
  }
  return names;
}

}  // namespace

std::string quote(std::string_view name) {
  if (name.size() <= kLongestQuote) {
    return '\'' + std::string(name) + '\'';
  }
  std::size_t end = kLongestQuote;
  while (end > kLongestQuote - 4 && continuesCharacter(name[end])) {
    --end;
  }
  return '\'' + std::string(name.substr(0, end)) + "...'";
}

std::string quoteKey(std::string_view component, std::string_view package) {
  // One byte more than is quoted is enough of either name.
  constexpr std::size_t kEnough = kLongestQuote + 1;
  std::string key(component.substr(0, kEnough));
  return quote(key.append(1, '_').append(package.substr(0, kEnough)));
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

std::string describePlace(std::string_view pointer) {
  const std::vector<std::string> names = firstNames(pointer);
  const std::size_t depth = names.size();
  if (depth >= 2 && names[0] == "metadata" && (names[1] == "target" || names[1] == "base")) {
    return names[1] + " release";
  }
  if (depth >= 2 && names[0] == "products") {
    return describeProduct(names[1]);
  }
  if (depth >= 4 && names[0] == "components" && (names[2] == "delete" || names[2] == "extract")) {
    return describePackage(names[3], ("to " + names[2]).c_str(), names[1]);
  }
  if (depth >= 3 && names[0] == "componentsWithFilesDeleted") {
    return describePackage(names[2], "with files to delete", names[1]);
  }
  if (depth >= 2 && (names[0] == "components" || names[0] == "componentsWithFilesDeleted")) {
    return describeComponent(names[1]);
  }
  const bool isSection =
      depth >= 1 && (names[0] == "metadata" || names[0] == "components" || names[0] == "products" ||
                     names[0] == "componentsWithFilesDeleted");
  return isSection ? "section " + quote(names[0]) : "";
}

}  // namespace install::update_metadata_parser::diagnosis
