// The section "components": collects the packages to delete and to extract of each component in the
// parser's two tables, for the products.

#include <utility>

#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "reader/FieldAccess.h"
#include "reader/NumberConversion.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Member;
using foundation::json::Object;
using foundation::json::Value;

// Adds the packages of a component to a table, unless there are none or a component with that name
// came first.
template <class Table>
void addToTable(Table& table, const std::u16string& name, typename Table::mapped_type packages) {
  if (packages.empty()) {
    return;
  }
  // Names mostly come in order, so they belong at the end.
  table.emplace_hint(table.end(), name, std::move(packages));
}

}  // namespace

void UpdateMetaDataJsonParser::parseComponentData(const Value& components) {
  if (components.is<std::nullptr_t>()) {
    return;
  }
  for (const Member& component : components.as<Object>()) {
    const std::u16string name = fl::i18n::to_ustring(component.first);
    addToTable(componentPkgsToDelete, name, parsePkgsForComponentsToDelete(component.second));
    addToTable(componentPkgsToExtract, name, parsePkgsForComponentsToExtract(component.second));
  }
}

std::map<std::u16string, std::int64_t> UpdateMetaDataJsonParser::parsePkgsForComponentsToDelete(
    const Value& component) const {
  std::map<std::u16string, std::int64_t> sizes;
  for (const Member& pkg : getObject("delete", component, "")) {
    std::u16string name = fl::i18n::to_ustring(pkg.first);
    const std::int64_t size = toByteCount(getNumber("size", pkg.second, ""));
    sizes.emplace_hint(sizes.end(), std::move(name), size);
  }
  return sizes;
}

std::vector<UpdatePkgData> UpdateMetaDataJsonParser::parsePkgsForComponentsToExtract(
    const Value& component) const {
  const Object extract = getObject("extract", component, "");
  std::vector<UpdatePkgData> pkgs;
  pkgs.reserve(extract.size());
  for (const Member& pkg : extract) {
    std::u16string name = fl::i18n::to_ustring(pkg.first);
    const std::int64_t size = toByteCount(getNumber("size", pkg.second, ""));
    const std::int64_t uncompressedBytes =
        toByteCount(getNumber("uncompressedBytes", pkg.second, ""));
    pkgs.push_back({std::move(name), size, uncompressedBytes});
  }
  return pkgs;
}

}  // namespace install::update_metadata_parser
