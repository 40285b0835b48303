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

/// What callers keep of a loaded document: a read-only view of its releases and its answers.
///
/// A facade shares its handler and keeps it alive, with the model and the catalogue, after the
/// parser is gone. Copies are cheap and share the same handler; they may be made and destroyed in
/// different threads, because only the shared count is touched. Questions are not synchronised: no
/// two threads may ask facades of one handler at the same time.
///
/// Each operation calls the handler's virtual operation of the same name once and returns its
/// result unchanged: nothing is cached, converted or checked here. Whatever the handler, the model
/// or the catalogue throws passes through, and std::bad_alloc with it; what each operation can
/// throw is the handler's to say. Every result is the caller's own copy. An operation that states
/// no cost takes constant time, except for copying a string.
///
/// All strings are UTF-16. A package key is the component's name, an underscore and the package's
/// name. Sets and maps are ordered by code units, compared as unsigned numbers, a prefix first.
class UPDATE_METADATA_PARSER_EXPORT UpdateMetaData {
 public:
  /// Shares `updateMetaDataHandler`, whose count rises by one.
  ///
  /// \pre the pointer is not empty; not checked, here or later. Throws nothing.
  explicit UpdateMetaData(const std::shared_ptr<UpdateMetaDataHandler>& updateMetaDataHandler);

  /// Shares the other facade's handler. Throws nothing.
  UpdateMetaData(const UpdateMetaData&) = default;

  /// Shares the other facade's handler in place of its own. Throws nothing.
  UpdateMetaData& operator=(const UpdateMetaData&) = default;

  /// Drops this facade's reference; the last one destroys the handler.
  virtual ~UpdateMetaData();

  /// Tells the release family that the update starts from; empty if the document gives none.
  virtual std::u16string getBaseReleaseFamily() const;

  /// Tells the release family that the update leads to; empty if the document gives none.
  virtual std::u16string getTargetReleaseFamily() const;

  /// Tells the version of the release that the update starts from; empty if the document gives
  /// none.
  virtual std::u16string getBaseReleaseVersion() const;

  /// Tells the version of the release that the update leads to; empty if the document gives none.
  virtual std::u16string getTargetReleaseVersion() const;

  /// Tells the update level of the target release, from -128 to 127.
  ///
  /// The level is kept as a signed byte: a document's 300 reads back as 44, its 200 as -56.
  virtual int getTargetUpdateLevelForQorv() const;

  /// Lists the packages to extract by product base code.
  ///
  /// A product without packages to extract has no entry. Of two products with one base code, the
  /// earlier in model order has the entry; the later one is left out, not merged.
  ///
  /// \param productDataLocation  opens the product catalogue if none is open yet; ignored
  /// afterwards
  ///
  /// Const here, although the handler may open its catalogue. The catalogue's errors pass through.
  /// One catalogue look-up per product with packages, and O(n log n) comparisons for n packages.
  virtual std::map<std::u16string, std::set<std::u16string>> getComponentsToExtract(
      const std::u16string& productDataLocation) const;

  /// Lists the packages to extract of the product with one base code.
  ///
  /// Every product whose name equals the catalogue's name for `productBaseCode` contributes; the
  /// result is empty when none does.
  ///
  /// \param productBaseCode      as the product catalogue has it
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

  /// Lists the packages that lose single files: the files to delete, then the package's size in
  /// bytes, by package key.
  ///
  /// A package without files has an entry with an empty set. Of two packages with one key, the
  /// earlier in model order has the entry. Never touches the catalogue. O(n log n) comparisons for
  /// n packages and files.
  virtual std::map<std::u16string, std::pair<std::set<std::u16string>, std::int64_t>>
  getComponentsWithFilesToDelete() const;

  /// Tells each package to extract its size and its unpacked size, both in bytes, by package key.
  ///
  /// Products are not told apart and nothing is added up: the first package with a key keeps its
  /// two numbers. Never touches the catalogue. O(n log n) comparisons for n packages.
  virtual std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>
  getUpdateSizeForComponentsToExtract() const;

 protected:
  std::shared_ptr<UpdateMetaDataHandler> handler;  ///< never empty
};

}  // namespace install::update_metadata_parser
