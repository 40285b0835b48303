// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "install/update_metadata_parser/Export.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "install/update_metadata_parser/fwd.h"

namespace install::update_metadata_parser {

/// How large a document may be. For installers that read documents of others and cannot limit the
/// memory of their process.
///
/// What exceeds a limit is rejected before it is stored in the model. Until then a load takes up to
/// about 25 times the bytes of the text.
struct UPDATE_METADATA_PARSER_EXPORT Limits {
  /// Bytes of the text.
  std::uint64_t bytes = std::uint64_t{256} << 20;

  /// Packages named: for each product, on both sides, the packages of each component that it names,
  /// counted as often as it names it. The answers have at most one entry for each.
  std::uint64_t packages = 10'000'000;

  /// Single files to delete.
  std::uint64_t files = 10'000'000;

  /// UTF-16 units in the keys of all packages named and of all packages with files to delete. A key
  /// repeats the name of its component, which can be nearly as long as the text.
  std::uint64_t keyUnits = std::uint64_t{256} << 20;
};

/// A handler that rejects more packages, files and units of keys than its limits allow.
///
/// It counts what it receives over its whole life, so use one for each load. Derive from it as from
/// UpdateMetaDataHandler; an override that adds products or files calls the operation of this
/// class.
class UPDATE_METADATA_PARSER_EXPORT LimitedHandler : public UpdateMetaDataHandler {
 public:
  /// Makes a handler with an empty model.
  explicit LimitedHandler(const Limits& limits = Limits());
  ~LimitedHandler() override;

  /// Adds a product as the base class does, unless it names too many packages or their keys are too
  /// long. Linear in the packages named.
  ///
  /// \throws std::runtime_error  "Update MetaData Json file names more than ", the limit and
  ///                             " packages", or "Update MetaData Json file has more than ", the
  ///                             limit and " characters in keys": the product has not been added
  void setProductDeltaData(const std::u16string& name,
                           const std::vector<std::u16string>& compsToDelete,
                           const std::vector<std::u16string>& compsToExtract,
                           const PkgsToDelete& pkgsToDelete,
                           const PkgsToExtract& pkgsToExtract) const override;

  /// Makes a package as the base class does, unless there are too many files.
  ///
  /// \throws std::runtime_error  "Update MetaData Json file lists more than ", the limit and
  ///                             " files to delete"
  datamodels::product_update::PkgDataWithFilesToDelete createPkgDataWithFilesToDelete(
      const std::u16string& name, std::int64_t size,
      const std::vector<std::u16string>& files) const override;

  /// Adds a component as the base class does, unless the keys of its packages are too long.
  ///
  /// \throws std::runtime_error  as setProductDeltaData() does for keys: the component has not been
  ///                             added
  void setComponentDataWithFilesToDelete(
      const std::u16string& name,
      const std::vector<datamodels::product_update::PkgDataWithFilesToDelete>& pkgs) const override;

 private:
  Limits limits_;
  mutable std::uint64_t packages_ = 0;
  mutable std::uint64_t files_ = 0;
  mutable std::uint64_t keyUnits_ = 0;
};

/// A parser that rejects a text that is too long, and loads into a LimitedHandler.
class UPDATE_METADATA_PARSER_EXPORT LimitedParser : public UpdateMetaDataJsonParser {
 public:
  /// Stores a copy of the path and of the limits.
  explicit LimitedParser(const std::u16string& path, const Limits& limits = Limits());
  ~LimitedParser() override;

  /// Reads the file at `path` as the base class does, but no more than one byte beyond the limit.
  /// An override that reads from elsewhere limits the bytes itself.
  ///
  /// \throws std::runtime_error  "Update MetaData Json file has more than ", the limit and " bytes"
  std::string readFile(const std::u16string& path) override;

  /// Makes a LimitedHandler with the same limits.
  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override;

 private:
  Limits limits_;
};

}  // namespace install::update_metadata_parser
