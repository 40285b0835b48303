// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "install/update_metadata_parser/Export.h"
#include "install/update_metadata_parser/fwd.h"

namespace install::update_metadata_parser {

/// A read-only view of a loaded document, for callers to keep: its releases and its answers.
///
/// A facade shares its handler and keeps it alive, with the model and the catalogue, after the
/// parser is gone. Copies are cheap and share the same handler; they may be made and destroyed in
/// different threads, because only the shared count is touched. Queries are not synchronized: no
/// two threads may query facades of one handler at the same time.
///
/// Each operation calls the handler's virtual operation of the same name once and returns its
/// result unchanged: nothing is cached, converted or checked here. Exceptions of the handler, the
/// model and the catalogue pass through, and so does std::bad_alloc; the handler documents what
/// each operation can throw. Every result is the caller's own copy. An operation that states no
/// cost takes constant time, except for copying a string.
///
/// All strings are UTF-16. A package key is the component's name, an underscore and the package's
/// name. Sets and maps are ordered by code units, compared as unsigned numbers, with a prefix
/// first.
class UPDATE_METADATA_PARSER_EXPORT UpdateMetaData {
 public:
  /// Shares `updateMetaDataHandler`; its reference count rises by one. Throws nothing.
  ///
  /// \pre the pointer is not empty; not checked, here or later
  explicit UpdateMetaData(const std::shared_ptr<UpdateMetaDataHandler>& updateMetaDataHandler);

  /// Shares the other facade's handler. Throws nothing.
  UpdateMetaData(const UpdateMetaData&) = default;

  /// Releases this facade's handler and shares the other facade's. Throws nothing.
  UpdateMetaData& operator=(const UpdateMetaData&) = default;

  /// Drops this facade's reference; the last one destroys the handler.
  virtual ~UpdateMetaData();

  /// Returns the release family that the update starts from; empty if the document gives none.
  virtual std::u16string getBaseReleaseFamily() const;

  /// Returns the release family that the update leads to; empty if the document gives none.
  virtual std::u16string getTargetReleaseFamily() const;

  /// Returns the version of the release that the update starts from; empty if the document gives
  /// none.
  virtual std::u16string getBaseReleaseVersion() const;

  /// Returns the version of the release that the update leads to; empty if the document gives none.
  virtual std::u16string getTargetReleaseVersion() const;

  /// Returns the update level of the target release, from -128 to 127.
  ///
  /// The level is stored as a signed byte: a document's 300 is returned as 44, its 200 as -56.
  virtual int getTargetUpdateLevelForQorv() const;

  /// Lists the packages to extract by product base code.
  ///
  /// A product without packages to extract has no entry. Of two products with one base code, the
  /// earlier in model order has the entry; the later one is left out, not merged.
  ///
  /// \param productDataLocation  opens the catalogue if none is open yet; ignored afterwards
  ///
  /// Const here, although the handler may open its catalogue. The catalogue's errors pass through.
  /// One catalogue look-up per product with packages, and O(n log n) comparisons for n packages.
  virtual std::map<std::u16string, std::set<std::u16string>> getComponentsToExtract(
      const std::u16string& productDataLocation) const;

  /// Lists the packages to extract of the product with one base code.
  ///
  /// Every product whose name equals the catalogue's name for `productBaseCode` contributes; the
  /// result is empty if none does.
  ///
  /// \param productBaseCode      as in the product catalogue
  /// \param productDataLocation  as above
  ///
  /// Const here, although the handler may open its catalogue. The catalogue's errors pass through.
  /// One catalogue look-up per product of the document, and O(n log n) comparisons for the n
  /// packages of the products that contribute.
  virtual std::set<std::u16string> getComponentsToExtract(
      const std::u16string& productBaseCode, const std::u16string& productDataLocation) const;

  /// Lists the packages to delete by product base code, by the same rules as for those to extract.
  virtual std::map<std::u16string, std::set<std::u16string>> getComponentsToDelete(
      const std::u16string& productDataLocation) const;

  /// Lists the packages to delete of the product with one base code, by the same rules as for those
  /// to extract.
  virtual std::set<std::u16string> getComponentsToDelete(
      const std::u16string& productBaseCode, const std::u16string& productDataLocation) const;

  /// Lists the packages that lose single files, by package key: the files to delete, then the
  /// package's size in bytes.
  ///
  /// A package without files has an entry with an empty set. Of two packages with one key, the
  /// earlier in model order has the entry. Never touches the catalogue. O(n log n) comparisons for
  /// n packages and files.
  virtual std::map<std::u16string, std::pair<std::set<std::u16string>, std::int64_t>>
  getComponentsWithFilesToDelete() const;

  /// Lists the size and the unpacked size, both in bytes, of each package to extract, by package
  /// key.
  ///
  /// Products are not distinguished and nothing is added up: the first package with a key
  /// determines both numbers. Never touches the catalogue. O(n log n) comparisons for n packages.
  virtual std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>
  getUpdateSizeForComponentsToExtract() const;

 protected:
  std::shared_ptr<UpdateMetaDataHandler> handler;  ///< never empty
};

}  // namespace install::update_metadata_parser
