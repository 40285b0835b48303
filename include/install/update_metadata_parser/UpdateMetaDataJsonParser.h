// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "install/update_metadata_parser/Export.h"
#include "install/update_metadata_parser/UpdatePkgData.h"
#include "install/update_metadata_parser/fwd.h"

namespace install::update_metadata_parser {

/// Reads one update metadata document.
///
/// Construct it from the document's path, call parseUpdateMetaDataJson() and keep the facade that
/// it returns; the parser may go. Derive from it to read the text from elsewhere (readFile) or to
/// have the document kept by a handler of one's own (getUpdateMetaDataHandler).
///
/// All failures are exceptions, nothing is logged, and nothing is rolled back: what was handed to
/// the handler before a failure stays there. A parser belongs to one thread at a time.
///
/// The operations that read a part of the document throw as parseUpdateMetaDataJson() does, and
/// take time in proportion to what they read and make, as it does. They are not virtual. Most
/// callers never need them: they are the steps of a load, for a derived parser that composes its
/// own. setupUpdateMetaDataHandler() comes first: setupUpdateMetaData(), parseMetaData(),
/// parseReleaseData(), parseProductData() and parseComponentsWithFilesDeleted() use the handler
/// that it stores, and do not check that there is one.
class UPDATE_METADATA_PARSER_EXPORT UpdateMetaDataJsonParser {
 public:
  /// Keeps a copy of `metaDataFilePath`, in UTF-16, and does nothing else: no input, no output.
  explicit UpdateMetaDataJsonParser(const std::u16string& metaDataFilePath);

  UpdateMetaDataJsonParser(const UpdateMetaDataJsonParser&) = delete;
  UpdateMetaDataJsonParser& operator=(const UpdateMetaDataJsonParser&) = delete;

  virtual ~UpdateMetaDataJsonParser();

  /// Loads the document into a new handler and returns a facade on it.
  ///
  /// The handler is made, its releases are initialised and the facade is made before anything is
  /// read. Then the sections "metadata", "components", "products" and "componentsWithFilesDeleted"
  /// are read in this order, whatever their order in the file; each is looked up when its turn
  /// comes. Other members at the top are ignored.
  ///
  /// A second call makes a new handler and a new facade; earlier facades keep theirs. The two
  /// tables of packages are kept, so that their first entries win over those of the second text.
  ///
  /// \throws std::runtime_error
  ///         - "Update MetaData Json file does not exist ", with the final blank
  ///         - "Error opening Update MetaData Json File"
  ///         - "Error while parsing " and the path: malformed text, or a top level that is not an
  ///           object
  ///         - "Invalid data provided for '", a member's name and "'": a member is missing or of
  ///           the wrong kind
  ///         - "invalid conversion: " and two kinds, joined by " to ": a value is not of the kind
  ///           that is needed; a missing "base" or "target" counts as one ("undefined to object")
  /// \throws std::out_of_range       "map::at": one of the four sections is missing
  /// \throws std::ios_base::failure  the file could be opened but not read to its end
  ///
  /// What a handler throws passes through unchanged. After a failure the parser keeps the new
  /// handler and the two tables, as far as they were filled.
  ///
  /// Linear in the size of the text, but n log n where members have to be put in order, and linear
  /// in the elements made: one for each package of each component of each product.
  virtual std::shared_ptr<UpdateMetaData> parseUpdateMetaDataJson();

  /// Reads the whole file at `path` and returns its bytes, unchanged.
  ///
  /// \throws std::runtime_error      the file is missing or cannot be opened, as above
  /// \throws std::ios_base::failure  a read failed; never a shortened text
  virtual std::string readFile(const std::u16string& path);

  /// Makes a new handler. It is the factory for the handler of a load, not a way to the stored one.
  ///
  /// An override must not return an empty pointer; not checked: setupUpdateMetaDataHandler() calls
  /// the result's operations.
  virtual std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const;

  /// Reads and parses the file at `path` and returns its top-level object.
  ///
  /// Whatever readFile() throws passes through. Every std::exception of parsing becomes a
  /// std::runtime_error "Error while parsing " and the path in UTF-8; its own text is dropped.
  /// The object is the caller's own and shares its immutable content with its copies. Its header,
  /// foundation/json/Value.h, is needed to use it.
  foundation::json::Object getJsonObjFromFile(const std::u16string& path);

  /// Stores what getUpdateMetaDataHandler() makes, dropping the former handler, and calls on it
  /// initializeReleaseData(), initializeBaseRelease() and initializeTargetRelease().
  void setupUpdateMetaDataHandler();

  /// Makes a facade that shares the stored handler.
  ///
  /// \pre here and below, where the handler is used: setupUpdateMetaDataHandler() has been called;
  /// not checked.
  std::shared_ptr<UpdateMetaData> setupUpdateMetaData() const;

  /// Reads the section "metadata": the architecture, then the target, then the base release, and
  /// hands each to the handler.
  ///
  /// \throws std::runtime_error  as parseUpdateMetaDataJson() does for members and conversions
  void parseMetaData(const foundation::json::Value& metadata);

  /// Reads one release and hands its family and version, and the update level of the target, to the
  /// handler once all eight fields were read and checked. A JSON null is skipped.
  ///
  /// \param release  an object with the eight fields, or null
  /// \param key      "target" selects the setters of the target release, everything else those of
  ///                 the base release
  void parseReleaseData(const foundation::json::Value& release, const std::string& key);

  /// Fills the two tables of packages from the section "components". A JSON null is skipped. The
  /// first component of a name wins in each table.
  void parseComponentData(const foundation::json::Value& components);

  /// Returns the packages to delete of one component, by name: their sizes in bytes. The first
  /// package of a name wins.
  std::map<std::u16string, std::int64_t> parsePkgsForComponentsToDelete(
      const foundation::json::Value& component) const;

  /// Returns the packages to extract of one component, in ascending byte order of their UTF-8
  /// names.
  std::vector<UpdatePkgData> parsePkgsForComponentsToExtract(
      const foundation::json::Value& component) const;

  /// Hands every product of the section "products" that names a component to the handler, together
  /// with the two tables, in ascending byte order of the names. A JSON null is skipped.
  void parseProductData(const foundation::json::Value& products);

  /// Returns the component names in the array member `key` of one product, in document order.
  std::vector<std::u16string> parseCompsFromProductData(
      const std::string& key, const foundation::json::Value& product) const;

  /// Hands the packages with single files to delete of the section "componentsWithFilesDeleted" to
  /// the handler, then their component, component by component. A JSON null is skipped.
  void parseComponentsWithFilesDeleted(const foundation::json::Value& section);

 protected:
  std::u16string metaDataFilePath;                 ///< as it was given
  std::shared_ptr<UpdateMetaDataHandler> handler;  ///< of the latest load; empty before the first

  /// Sizes in bytes of the packages to delete, by component, then by package.
  std::map<std::u16string, std::map<std::u16string, std::int64_t>> componentPkgsToDelete;

  /// The packages to extract, by component, in the order in which they were read.
  std::map<std::u16string, std::vector<UpdatePkgData>> componentPkgsToExtract;
};

}  // namespace install::update_metadata_parser
