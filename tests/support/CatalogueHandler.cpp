#include "support/CatalogueHandler.h"

namespace test_support {
namespace {

std::u16string lookUp(const std::map<std::u16string, std::u16string>& table,
                      const std::u16string& key) {
  const auto found = table.find(key);
  return found != table.end() ? found->second : std::u16string();
}

}  // namespace

std::u16string CatalogueHandler::getProductName(const std::u16string& productBaseCode,
                                                const std::u16string& productDataLocation) {
  lookUps.push_back({u"name of", productBaseCode, productDataLocation});
  return lookUp(namesByCode, productBaseCode);
}

std::u16string CatalogueHandler::getProductBaseCode(const std::u16string& productName,
                                                    const std::u16string& productDataLocation) {
  lookUps.push_back({u"code of", productName, productDataLocation});
  return lookUp(codesByName, productName);
}

}  // namespace test_support
