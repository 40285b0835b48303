#pragma once

#include <string>

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace update_metadata_tool {

/// A handler that also keeps the architecture where it can be read.
class SummaryHandler : public install::update_metadata_parser::UpdateMetaDataHandler {
 public:
  void setMetaDataArch(const std::u16string& arch) const override {
    UpdateMetaDataHandler::setMetaDataArch(arch);
    architecture_ = arch;
  }

  const std::u16string& architecture() const { return architecture_; }

 private:
  mutable std::u16string architecture_;  // setters are const: what a handler fills is not itself
};

}  // namespace update_metadata_tool
