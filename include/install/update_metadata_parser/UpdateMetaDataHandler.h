// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "install/datamodels/product_update/ProductDeltaData.h"
#include "install/datamodels/product_update/ProductUpdateMetaData.h"
#include "install/update_metadata_parser/Export.h"
#include "install/update_metadata_parser/UpdatePkgData.h"
#include "install/update_metadata_parser/fwd.h"
#include "mf/zero/elements/Model.h"

namespace install::update_metadata_parser {

/// Owns the model of one document and the product catalogue, fills the model on behalf of the
/// reader, and answers queries about it.
///
/// The reader and the facade call every virtual operation through the object, so that a derived
/// handler can replace any of them. The order of the virtual operations is binary interface.
///
/// Nothing is synchronized: a handler belongs to one thread at a time, except that the last owner
/// may release it in any thread. The handler itself throws no errors; those of the model and of the
/// catalogue pass through, and so does std::bad_alloc.
///
/// All strings are UTF-16 and are stored unchanged; all sizes are in bytes. Every result is the
/// caller's own copy, except that handles share the model. An operation that states no cost takes
/// constant time, except for copying strings. An operation that documents no error throws only
/// std::bad_alloc, unless a derived handler's operation that it calls throws something else.
class UPDATE_METADATA_PARSER_EXPORT UpdateMetaDataHandler {
 public:
  /// Sizes of packages to delete, by component name, then by package name.
  using PkgsToDelete = std::map<std::u16string, std::map<std::u16string, std::int64_t>>;

  /// Packages to extract by component name.
  using PkgsToExtract = std::map<std::u16string, std::vector<UpdatePkgData>>;

  /// Makes a model and the root of its tree: no release data, no releases, no catalogue yet.
  UpdateMetaDataHandler();

  UpdateMetaDataHandler(const UpdateMetaDataHandler&) = delete;
  UpdateMetaDataHandler& operator=(const UpdateMetaDataHandler&) = delete;

  /// Releases the catalogue, then the root, then the model.
  virtual ~UpdateMetaDataHandler();

  /// Gives the root new, empty release data, replacing any that it had.
  virtual void initializeReleaseData() const;

  /// Gives the release data a new, empty base release, replacing any that it had.
  ///
  /// \pre initializeReleaseData() has been called; not checked.
  virtual void initializeBaseRelease() const;

  /// Gives the release data a new, empty target release, replacing any that it had.
  ///
  /// \pre initializeReleaseData() has been called; not checked.
  virtual void initializeTargetRelease() const;

  /// Sets the family of the base release.
  ///
  /// \pre for this and every other operation on a release: the releases have been initialized; not
  /// checked.
  virtual void setBaseReleaseFamily(const std::u16string& family);

  /// Returns the family of the base release, empty until it is set.
  virtual std::u16string getBaseReleaseFamily() const;

  /// Sets the family of the target release.
  virtual void setTargetReleaseFamily(const std::u16string& family);

  /// Returns the family of the target release, empty until it is set.
  virtual std::u16string getTargetReleaseFamily() const;

  /// Sets the version of the base release.
  ///
  /// Const, as are the setters below, because the handler holds the model by handle.
  virtual void setBaseReleaseVersion(const std::u16string& version) const;

  /// Returns the version of the base release, empty until it is set.
  virtual std::u16string getBaseReleaseVersion() const;

  /// Sets the version of the target release.
  virtual void setTargetReleaseVersion(const std::u16string& version) const;

  /// Returns the version of the target release, empty until it is set.
  virtual std::u16string getTargetReleaseVersion() const;

  /// Sets the update level of the target release.
  ///
  /// Only the low eight bits of `level` are kept and are read back as a signed byte: 300 comes back
  /// as 44, 200 as -56, 256 as 0. Nothing is clamped and no level is an error.
  virtual void setTargetUpdateLevelForQorv(int level) const;

  /// Returns the update level of the target release, from -128 to 127; 0 until it is set.
  virtual int getTargetUpdateLevelForQorv() const;

  /// Stores the architecture that the document was made for. No operation reads it back.
  virtual void setMetaDataArch(const std::u16string& arch) const;

  /// Adds one product with its components and their packages at the end of the model's products.
  ///
  /// A name given twice makes two components with the same packages. A component that is missing
  /// from a table has no packages. The product is attached last: if anything fails, the root is
  /// unchanged and every element made for the product is released; names and rows that are already
  /// stored take memory of the model until its end.
  ///
  /// \param name            the product's name
  /// \param compsToDelete   names of the components to delete
  /// \param compsToExtract  names of the components to extract
  /// \param pkgsToDelete    packages by component, added in the order of their names
  /// \param pkgsToExtract   packages by component, added in their order, repeats included
  ///
  /// A named component takes 16 bytes; elements come into being when a program reads them. Packages
  /// are stored once for successive components with one name that are given the same; comparing
  /// them takes constant time for each, and so does storing them. A component that one call names
  /// again is not compared again.
  virtual void setProductDeltaData(const std::u16string& name,
                                   const std::vector<std::u16string>& compsToDelete,
                                   const std::vector<std::u16string>& compsToExtract,
                                   const PkgsToDelete& pkgsToDelete,
                                   const PkgsToExtract& pkgsToExtract) const;

  /// Makes a package with single files to delete, not attached to anything yet.
  ///
  /// \param name   the package's name
  /// \param size   the package's size in bytes
  /// \param files  paths, kept in this order with their repeats
  virtual datamodels::product_update::PkgDataWithFilesToDelete createPkgDataWithFilesToDelete(
      const std::u16string& name, std::int64_t size,
      const std::vector<std::u16string>& files) const;

  /// Adds one component with such packages at the end of the model's components with files to
  /// delete, even if `pkgs` is empty.
  ///
  /// A package of another handler's model is rejected with the model framework's exception; the
  /// root is then unchanged. A package given twice is added once. Linear in `pkgs` if none of them
  /// has been in a list before; a package that has been must be searched for.
  virtual void setComponentDataWithFilesToDelete(
      const std::u16string& name,
      const std::vector<datamodels::product_update::PkgDataWithFilesToDelete>& pkgs) const;

  /// Lists the packages to extract by product base code.
  ///
  /// A product without packages to extract has no entry and is not looked up in the catalogue. Of
  /// two products with one base code, the earlier in model order has the entry; the later one is
  /// left out, not merged.
  ///
  /// \param productDataLocation  opens the catalogue if none is open yet; ignored afterwards
  ///
  /// Not const: it may open the catalogue, whose errors pass through. The result is the caller's
  /// own copy. One call of getProductBaseCode() per product with packages, and O(n log n)
  /// comparisons for n packages.
  virtual std::map<std::u16string, std::set<std::u16string>> getComponentsToExtract(
      const std::u16string& productDataLocation);

  /// Lists the packages to extract of the products whose name is getProductName(productBaseCode).
  ///
  /// Calls getProductName() once for each product of the model, not once in total; an empty model
  /// never opens the catalogue. All products with that name contribute. The catalogue's errors pass
  /// through. O(n log n) comparisons for their n packages.
  virtual std::set<std::u16string> getComponentsToExtract(
      const std::u16string& productBaseCode, const std::u16string& productDataLocation);

  /// Lists the packages to delete by product base code, by the same rules as those to extract.
  virtual std::map<std::u16string, std::set<std::u16string>> getComponentsToDelete(
      const std::u16string& productDataLocation);

  /// Lists the packages to delete of the products with one base code, by the same rules as those to
  /// extract.
  virtual std::set<std::u16string> getComponentsToDelete(const std::u16string& productBaseCode,
                                                         const std::u16string& productDataLocation);

  /// Lists the packages with single files to delete, by package key: the files, then the package's
  /// size in bytes. A package without files has an entry with an empty set; of two packages with
  /// one key, the earlier in model order has the entry. O(n log n) comparisons for n packages and
  /// files.
  virtual std::map<std::u16string, std::pair<std::set<std::u16string>, std::int64_t>>
  getComponentsWithFilesToDelete() const;

  /// Lists the size and the unpacked size in bytes of each package to extract, by package key.
  ///
  /// Nothing is added up: of two packages with one key, even in different products, the earlier in
  /// model order determines both numbers. O(n log n) comparisons for n packages.
  virtual std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>
  getUpdateSizeForComponentsToExtract() const;

  /// Returns a new reference to the root of the model: the tree itself, not a copy.
  virtual datamodels::product_update::ProductUpdateMetaData getProductUpdateMetaDataModel() const;

  /// Opens the product catalogue at `productDataLocation` if none is open yet.
  ///
  /// The first location that can be opened is used for the handler's life; later ones are ignored.
  /// Exceptions of the catalogue's constructor pass through; then no catalogue is open and the next
  /// call tries again. Takes as long as opening the catalogue.
  virtual void initializeProductDataProvider(const std::u16string& productDataLocation);

  /// Returns the catalogue's product name for a base code, unchanged; the catalogue answers an
  /// unknown code with an empty string. Always calls initializeProductDataProvider() first.
  /// Exceptions of both pass through. One look-up in the catalogue.
  virtual std::u16string getProductName(const std::u16string& productBaseCode,
                                        const std::u16string& productDataLocation);

  /// Returns the catalogue's base code for a product name, by the same rules.
  virtual std::u16string getProductBaseCode(const std::u16string& productName,
                                            const std::u16string& productDataLocation);

  /// Adds a component to delete to `product` for each name, with its packages, in the given order.
  ///
  /// This operation and the next three throw std::bad_alloc, and, for an element of another
  /// handler's model, what appending to its list throws. An empty list then stays empty; what was
  /// added to another one before the failure stays. Constant time for each package added, and one
  /// look-up of each component in the table.
  void setCompsToDelete(const datamodels::product_update::ProductDeltaData& product,
                        const std::vector<std::u16string>& names,
                        const PkgsToDelete& pkgsToDelete) const;

  /// Adds a component to extract to `product` for each name, with its packages, in the given order.
  void setCompsToExtract(const datamodels::product_update::ProductDeltaData& product,
                         const std::vector<std::u16string>& names,
                         const PkgsToExtract& pkgsToExtract) const;

  /// Adds the packages of `componentName` in `pkgsToDelete` to `component`, in the order of their
  /// names.
  void setPkgsToDelete(const std::u16string& componentName,
                       const datamodels::product_update::ComponentDeltaData& component,
                       const PkgsToDelete& pkgsToDelete) const;

  /// Adds the packages of `componentName` in `pkgsToExtract` to `component`, in the given order.
  void setPkgsToExtract(const std::u16string& componentName,
                        const datamodels::product_update::ComponentDeltaData& component,
                        const PkgsToExtract& pkgsToExtract) const;

  /// Makes a package to delete, not attached to anything yet; its unpacked size stays unset.
  datamodels::product_update::PkgDeltaData initializePkgDataForDelete(const std::u16string& name,
                                                                      std::int64_t size) const;

  /// Makes a package to extract, not attached to anything yet.
  datamodels::product_update::PkgDeltaData initializePkgDataForExtract(
      const UpdatePkgData& pkg) const;

 protected:
  // Destroyed in reverse: the catalogue before the root, and the root before the model.
  mf::zero::Model model;                                   ///< creates every element
  datamodels::product_update::ProductUpdateMetaData root;  ///< the root of the tree

  /// The product catalogue; empty until initializeProductDataProvider() opens it.
  std::shared_ptr<product_data_provider::ProductDataProvider> productDataProvider;
};

}  // namespace install::update_metadata_parser
