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
/// it returns; the parser may then be destroyed. Derive from it to read the text from elsewhere
/// (readFile) or to fill your own kind of handler (getUpdateMetaDataHandler).
///
/// All failures are exceptions, nothing is logged, and nothing is rolled back: the handler keeps
/// what it received before a failure. A parser belongs to one thread at a time.
///
/// The operations that read a part of the document throw as parseUpdateMetaDataJson() does and,
/// like it, take time proportional to what they read and make. They are not virtual. Most callers
/// never need them: they are the steps of a load, for a derived parser that composes its own.
/// setupUpdateMetaDataHandler() comes first: setupUpdateMetaData(), parseMetaData(),
/// parseReleaseData(), parseProductData() and parseComponentsWithFilesDeleted() use the handler
/// that it stores and do not check that there is one.
class UPDATE_METADATA_PARSER_EXPORT UpdateMetaDataJsonParser {
 public:
  /// Stores a copy of `metaDataFilePath`, in UTF-16. Reads and writes nothing.
  explicit UpdateMetaDataJsonParser(const std::u16string& metaDataFilePath);

  UpdateMetaDataJsonParser(const UpdateMetaDataJsonParser&) = delete;
  UpdateMetaDataJsonParser& operator=(const UpdateMetaDataJsonParser&) = delete;

  virtual ~UpdateMetaDataJsonParser();

  /// Loads the document into a new handler and returns a facade on it.
  ///
  /// Before anything is read, the handler is made, its releases are initialized and the facade is
  /// made. Then the sections "metadata", "components", "products" and "componentsWithFilesDeleted"
  /// are read in this order, whatever their order in the file; each is looked up only when it is
  /// read. Other members at the top are ignored.
  ///
  /// A second call makes a new handler and a new facade; earlier facades keep theirs. The two
  /// tables of packages are kept, and their entries take precedence over those of the second
  /// document.
  ///
  /// \throws std::runtime_error
  ///         - "Update MetaData Json file does not exist ", with the final blank
  ///         - "Error opening Update MetaData Json File"
  ///         - "Error while parsing " and the path: malformed text, or a top level that is not an
  ///           object
  ///         - "Invalid data provided for '", a member's name and "'": a member is missing or of
  ///           the wrong kind
  ///         - "invalid conversion: " and two kinds, joined by " to ": a value is not of the
  ///           required kind; a missing "base" or "target" is one such value
  ///           ("undefined to object")
  /// \throws std::out_of_range       "map::at": one of the four sections is missing
  /// \throws std::ios_base::failure  the file could be opened but not read to its end
  ///
  /// Exceptions of the handler pass through unchanged. After a failure the parser keeps the new
  /// handler and the two tables, as far as they were filled.
  ///
  /// Linear in the size of the text, except O(n log n) where n members have to be sorted, and
  /// linear in the packages named, those of each component of each product. Memory is linear in the
  /// text and in the components named: the packages of a component are stored once.
  virtual std::shared_ptr<UpdateMetaData> parseUpdateMetaDataJson();

  /// Reads the whole file at `path` and returns its bytes, unchanged.
  ///
  /// \throws std::runtime_error      the file is missing or cannot be opened, as above
  /// \throws std::ios_base::failure  a read failed; never a shortened text
  virtual std::string readFile(const std::u16string& path);

  /// Makes a new handler. This is the factory for the handler of a load, not an accessor of the
  /// stored one.
  ///
  /// An override must not return an empty pointer. This is not checked:
  /// setupUpdateMetaDataHandler() calls operations of the result.
  virtual std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const;

  /// Reads and parses the file at `path` and returns its top-level object.
  ///
  /// Exceptions of readFile() pass through. Every std::exception of parsing becomes a
  /// std::runtime_error "Error while parsing " and the path in UTF-8; its own text is dropped. The
  /// object belongs to the caller and shares its immutable content with its copies. Using it
  /// requires its header, foundation/json/Value.h.
  foundation::json::Object getJsonObjFromFile(const std::u16string& path);

  /// Stores a new handler from getUpdateMetaDataHandler(), releasing the former one, and calls its
  /// operations initializeReleaseData(), initializeBaseRelease() and initializeTargetRelease().
  void setupUpdateMetaDataHandler();

  /// Makes a facade that shares the stored handler.
  ///
  /// \pre here and below, where the handler is used: setupUpdateMetaDataHandler() has been called;
  /// not checked.
  std::shared_ptr<UpdateMetaData> setupUpdateMetaData() const;

  /// Reads the section "metadata" and passes it to the handler: the architecture, then the target
  /// release, then the base release.
  ///
  /// \throws std::runtime_error  as parseUpdateMetaDataJson() does for members and conversions
  void parseMetaData(const foundation::json::Value& metadata);

  /// Reads one release and passes its family and version, and the update level of the target, to
  /// the handler once all eight fields have been read and checked. A JSON null is skipped.
  ///
  /// \param release  an object with the eight fields, or null
  /// \param key      "target" selects the setters of the target release, any other key those of
  ///                 the base release
  void parseReleaseData(const foundation::json::Value& release, const std::string& key);

  /// Fills the two tables of packages from the section "components". A JSON null is skipped. In
  /// each table, the first component with a name wins.
  void parseComponentData(const foundation::json::Value& components);

  /// Returns the packages to delete of one component: their sizes in bytes, by name. The first
  /// package with a name wins.
  std::map<std::u16string, std::int64_t> parsePkgsForComponentsToDelete(
      const foundation::json::Value& component) const;

  /// Returns the packages to extract of one component, in ascending byte order of their UTF-8
  /// names.
  std::vector<UpdatePkgData> parsePkgsForComponentsToExtract(
      const foundation::json::Value& component) const;

  /// Passes every product of the section "products" that names a component to the handler, together
  /// with the two tables, in ascending byte order of the names. A JSON null is skipped.
  void parseProductData(const foundation::json::Value& products);

  /// Returns the component names in the array member `key` of one product, in document order.
  std::vector<std::u16string> parseCompsFromProductData(
      const std::string& key, const foundation::json::Value& product) const;

  /// Reads the section "componentsWithFilesDeleted", component by component: passes the packages
  /// with single files to delete to the handler, then their component. A JSON null is skipped.
  void parseComponentsWithFilesDeleted(const foundation::json::Value& section);

 protected:
  std::u16string metaDataFilePath;                 ///< as given
  std::shared_ptr<UpdateMetaDataHandler> handler;  ///< of the latest load; empty before the first

  /// Sizes in bytes of the packages to delete, by component, then by package.
  std::map<std::u16string, std::map<std::u16string, std::int64_t>> componentPkgsToDelete;

  /// The packages to extract, by component, in the order in which they were read.
  std::map<std::u16string, std::vector<UpdatePkgData>> componentPkgsToExtract;
};

}  // namespace install::update_metadata_parser
