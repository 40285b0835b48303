#pragma once

#include <memory>
#include <string>
#include <vector>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace bench::micro {

/// Makes the document of a preset and loads it. Keeps nothing between calls.
std::shared_ptr<install::update_metadata_parser::UpdateMetaData> loadPreset(
    const std::string& preset);

/// The arguments that the reader passes to the handler for the products of one document.
struct ProductCalls {
  struct Call {
    std::u16string name;
    std::vector<std::u16string> toDelete;
    std::vector<std::u16string> toExtract;
  };
  std::vector<Call> calls;
  install::update_metadata_parser::UpdateMetaDataHandler::PkgsToDelete pkgsToDelete;
  install::update_metadata_parser::UpdateMetaDataHandler::PkgsToExtract pkgsToExtract;
  std::size_t packageElements = 0;  ///< how many package elements the calls make
};

ProductCalls productCallsOf(const std::string& preset);

/// Returns free memory to the system, so that later allocations touch new memory.
void forgetFreeMemory();

}  // namespace bench::micro
