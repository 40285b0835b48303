#pragma once

#include <map>
#include <string>
#include <vector>

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace test_support {

/// A handler with its own catalogue, two tables in memory. It records its look-ups.
///
/// A key that a table does not contain is answered with an empty string, as in the product
/// catalogue.
class CatalogueHandler : public install::update_metadata_parser::UpdateMetaDataHandler {
 public:
  std::map<std::u16string, std::u16string> namesByCode;
  std::map<std::u16string, std::u16string> codesByName;

  /// The look-ups so far, each as the operation and its two arguments.
  std::vector<std::vector<std::u16string>> lookUps;

  std::u16string getProductName(const std::u16string& productBaseCode,
                                const std::u16string& productDataLocation) override;
  std::u16string getProductBaseCode(const std::u16string& productName,
                                    const std::u16string& productDataLocation) override;

  /// The model, for tests that make elements without the handler.
  using UpdateMetaDataHandler::model;
};

}  // namespace test_support
