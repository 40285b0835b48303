#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "install/update_metadata_parser/Limits.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::summary {

/// A handler that also gives access to the architecture and shows the progress of the reader.
class SummaryHandler : public install::update_metadata_parser::LimitedHandler {
 public:
  /// \param progress  must outlive the handler
  SummaryHandler(const install::update_metadata_parser::Limits& limits,
                 terminal::ProgressLine& progress)
      : LimitedHandler(limits), progress_(progress) {}

  void setMetaDataArch(const std::u16string& arch) const override {
    LimitedHandler::setMetaDataArch(arch);
    architecture_ = arch;
  }

  void setProductDeltaData(const std::u16string& name,
                           const std::vector<std::u16string>& compsToDelete,
                           const std::vector<std::u16string>& compsToExtract,
                           const PkgsToDelete& pkgsToDelete,
                           const PkgsToExtract& pkgsToExtract) const override {
    progress_.begin("storing product " + std::to_string(++products_));
    LimitedHandler::setProductDeltaData(name, compsToDelete, compsToExtract, pkgsToDelete,
                                        pkgsToExtract);
  }

  install::datamodels::product_update::PkgDataWithFilesToDelete createPkgDataWithFilesToDelete(
      const std::u16string& name, std::int64_t size,
      const std::vector<std::u16string>& files) const override {
    progress_.begin("storing files to delete");
    return LimitedHandler::createPkgDataWithFilesToDelete(name, size, files);
  }

  const std::u16string& architecture() const { return architecture_; }

 private:
  // Mutable because the setters are const.
  mutable std::u16string architecture_;
  mutable std::size_t products_ = 0;  ///< stored so far
  terminal::ProgressLine& progress_;
};

}  // namespace update_metadata_tool::summary
