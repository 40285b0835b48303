// Answers with a product catalogue in memory: inject_a_catalogue DOCUMENT
//
// A derived handler opens the application's own catalogue instead of the one at a location.

#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "install/product_data_provider/ProductDataProvider.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "text.h"

namespace {

using install::product_data_provider::ProductDataProvider;
using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdateMetaDataJsonParser;

class MemoryCatalogue : public ProductDataProvider {
 public:
  /// `names` gives the name of each product by its base code.
  explicit MemoryCatalogue(std::map<std::u16string, std::u16string> names)
      : ProductDataProvider(u""), names_(std::move(names)) {}

  std::u16string getProductBaseCode(const std::u16string& productName) const override {
    for (const auto& [baseCode, name] : names_) {
      if (name == productName) {
        return baseCode;
      }
    }
    return u"";
  }

  std::u16string getProductName(const std::u16string& productBaseCode) const override {
    const auto found = names_.find(productBaseCode);
    return found == names_.end() ? u"" : found->second;
  }

 private:
  std::map<std::u16string, std::u16string> names_;
};

class MemoryCatalogueHandler : public UpdateMetaDataHandler {
 public:
  // Called before every look-up. The location given to a query is not needed here.
  void initializeProductDataProvider(const std::u16string& /*productDataLocation*/) override {
    if (!productDataProvider) {
      productDataProvider =
          std::make_shared<MemoryCatalogue>(std::map<std::u16string, std::u16string>{
              {u"EDIT", u"Fernlight Editor"}, {u"VIEW", u"Fernlight Viewer"}});
    }
  }
};

class MemoryCatalogueParser : public UpdateMetaDataJsonParser {
 public:
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;

  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    return std::make_shared<MemoryCatalogueHandler>();
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: inject_a_catalogue DOCUMENT\n";
    return 2;
  }
  try {
    const auto update = MemoryCatalogueParser(toUtf16(argv[1])).parseUpdateMetaDataJson();
    for (const auto& [baseCode, keys] : update->getComponentsToExtract(u"")) {
      std::cout << toUtf8(baseCode) << ": " << keys.size() << " packages to extract\n";
    }
    std::cout << "VIEW alone:\n";
    for (const std::u16string& key : update->getComponentsToExtract(u"VIEW", u"")) {
      std::cout << "  " << toUtf8(key) << '\n';
    }
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
