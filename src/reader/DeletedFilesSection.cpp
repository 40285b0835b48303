// The section "componentsWithFilesDeleted": packages that stay but lose single files.

#include <utility>

#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "reader/FieldAccess.h"
#include "reader/NumberConversion.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Array;
using foundation::json::Member;
using foundation::json::Object;
using foundation::json::Value;

std::vector<std::u16string> readFiles(const Value& pkg) {
  const Array entries = getArray("files", pkg, "");
  std::vector<std::u16string> files;
  files.reserve(entries.size());
  for (const Value& entry : entries) {
    // Paths are always UTF-8; names use the general conversion.
    files.push_back(fl::i18n::utf8_to_ustring(entry.as<std::string_view>()));
  }
  return files;
}

}  // namespace

void UpdateMetaDataJsonParser::parseComponentsWithFilesDeleted(const Value& section) {
  using datamodels::product_update::PkgDataWithFilesToDelete;
  if (section.is<std::nullptr_t>()) {
    return;
  }
  for (const Member& component : section.as<Object>()) {
    const std::u16string componentName = fl::i18n::to_ustring(component.first);
    const Object members = component.second.as<Object>();
    std::vector<PkgDataWithFilesToDelete> pkgs;
    pkgs.reserve(members.size());
    for (const Member& pkg : members) {
      const std::u16string name = fl::i18n::to_ustring(pkg.first);
      const std::int64_t size = toByteCount(getNumber("size", pkg.second, ""));
      pkgs.push_back(handler->createPkgDataWithFilesToDelete(name, size, readFiles(pkg.second)));
    }
    handler->setComponentDataWithFilesToDelete(componentName, pkgs);
  }
}

}  // namespace install::update_metadata_parser
