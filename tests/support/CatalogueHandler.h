#pragma once

#include <map>
#include <string>
#include <vector>

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace test_support {

/// A handler that brings its own catalogue, two tables in memory, and writes its questions down.
///
/// What a table does not hold is answered with an empty string, as the product catalogue does.
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

  /// The model, for elements that are made without the handler.
  using UpdateMetaDataHandler::model;
};

}  // namespace test_support
