// The section "products": the components that each product names, passed to the handler with the
// tables of their packages.

#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "reader/FieldAccess.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Array;
using foundation::json::Member;
using foundation::json::Object;
using foundation::json::Value;

}  // namespace

void UpdateMetaDataJsonParser::parseProductData(const Value& products) {
  if (products.is<std::nullptr_t>()) {
    return;
  }
  for (const Member& product : products.as<Object>()) {
    const std::u16string name = fl::i18n::to_ustring(product.first);
    const std::vector<std::u16string> compsToDelete =
        parseCompsFromProductData("delete", product.second);
    const std::vector<std::u16string> compsToExtract =
        parseCompsFromProductData("extract", product.second);
    if (!compsToDelete.empty() || !compsToExtract.empty()) {
      handler->setProductDeltaData(name, compsToDelete, compsToExtract, componentPkgsToDelete,
                                   componentPkgsToExtract);
    }
  }
}

std::vector<std::u16string> UpdateMetaDataJsonParser::parseCompsFromProductData(
    const std::string& key, const Value& product) const {
  const Array comps = getArray(key, product, "");
  std::vector<std::u16string> names;
  names.reserve(comps.size());
  for (const Value& comp : comps) {
    names.push_back(fl::i18n::to_ustring(comp.as<std::string_view>()));
  }
  return names;
}

}  // namespace install::update_metadata_parser
