#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

#include "install/product_data_provider/ProductDataProvider.h"
#include "mf/zero/elements/Uuid.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::ProductUpdateMetaData;
using product_data_provider::ProductDataProvider;

}  // namespace

UpdateMetaDataHandler::UpdateMetaDataHandler()
    : model(mf::zero::Model::create(mf::zero::ModelSpec())),
      root(ProductUpdateMetaData::create(model, mf::zero::Uuid())) {}

UpdateMetaDataHandler::~UpdateMetaDataHandler() = default;

ProductUpdateMetaData UpdateMetaDataHandler::getProductUpdateMetaDataModel() const {
  return root;
}

void UpdateMetaDataHandler::initializeProductDataProvider(
    const std::u16string& productDataLocation) {
  if (productDataProvider == nullptr) {
    productDataProvider =
        std::shared_ptr<ProductDataProvider>(new ProductDataProvider(productDataLocation));
  }
}

std::u16string UpdateMetaDataHandler::getProductName(const std::u16string& productBaseCode,
                                                     const std::u16string& productDataLocation) {
  initializeProductDataProvider(productDataLocation);
  return productDataProvider->getProductName(productBaseCode);
}

std::u16string UpdateMetaDataHandler::getProductBaseCode(
    const std::u16string& productName, const std::u16string& productDataLocation) {
  initializeProductDataProvider(productDataLocation);
  return productDataProvider->getProductBaseCode(productName);
}

}  // namespace install::update_metadata_parser
