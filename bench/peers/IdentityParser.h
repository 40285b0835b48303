#pragma once

#include <memory>
#include <string>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

namespace bench::peers {

/// A handler that needs no catalogue: a product's name is its base code.
class IdentityHandler : public install::update_metadata_parser::UpdateMetaDataHandler {
 public:
  std::u16string getProductName(const std::u16string& productBaseCode,
                                const std::u16string& /*productDataLocation*/) override {
    return productBaseCode;
  }
  std::u16string getProductBaseCode(const std::u16string& productName,
                                    const std::u16string& /*productDataLocation*/) override {
    return productName;
  }
};

/// A parser that fills such handlers.
class IdentityParser : public install::update_metadata_parser::UpdateMetaDataJsonParser {
 public:
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;

  std::shared_ptr<install::update_metadata_parser::UpdateMetaDataHandler> getUpdateMetaDataHandler()
      const override {
    return std::make_shared<IdentityHandler>();
  }
};

}  // namespace bench::peers
