#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// The places where documents name packages, and which answers of the library contain them.
namespace update_metadata_tool::places {

/// What is done with a package.
enum class Side : std::uint8_t {
  kDelete,
  kExtract,
  kFiles  ///< single files of it are deleted
};

/// "delete", "extract" or "files".
const char* nameOf(Side side);

/// Whether an answer of the library contains a place, or why it does not.
enum class Use : std::uint8_t {
  kNotAsked,              ///< the answer never contains packages of this side
  kUsed,                  ///< it does
  kEarlierProduct,        ///< a product that comes before gives the same
  kEqualKey,              ///< another package with this key comes first
  kRepeatedKey,           ///< in the value of a duplicate key, which is not read
  kRepeatedComponent,     ///< the component is named or described again
  kUndescribedComponent,  ///< "components" does not contain the component
  kUnusedComponent,       ///< no product names the component for this side
  kUnknownProduct,        ///< the product data do not contain the product
  kOtherProduct,          ///< the product data assign the base code to another product first
};

/// The word for a use in rows, such as "earlier-product"; "used" for kUsed. \pre not kNotAsked
const char* nameOf(Use use);

/// Whether an answer contains a place, and what it contains instead.
struct Verdict {
  Use use = Use::kNotAsked;

  /// The product for kEarlierProduct and kOtherProduct, the component for kEqualKey. That for
  /// kOtherProduct is as short-lived as the place.
  std::string_view winner = {};

  /// The line of the product, of the component's package or, for kRepeatedComponent, of the
  /// product's earlier mention. 0 if it is not known.
  std::size_t winnerLine = 0;
};

/// The verdict on a place for each answer.
struct Verdicts {
  Verdict allProducts;  ///< packages to delete, or to extract, by base code
  Verdict oneProduct;   ///< the same for the base code of the place's product
  Verdict sizes;        ///< sizes of the packages to extract
  Verdict files;        ///< packages with files to delete
};

/// The same use for each answer that could contain packages of a side.
Verdicts verdictsOf(Side side, Use use);

/// A product as a place shows it.
struct ProductOfPlace {
  std::string_view name;
  std::optional<std::string> baseCode;  ///< nothing without product data, or if they lack it
};

/// One mention of a package: by a product, for one side, or in the section of files.
///
/// Texts are UTF-8, as the library reads them, and live as long as the document.
struct Place {
  Side side = Side::kDelete;
  const ProductOfPlace* product = nullptr;  ///< null if no product is involved; as short-lived
  std::string_view component;
  std::optional<std::string_view> package;        ///< nothing for an undescribed component
  std::optional<std::int64_t> size;               ///< bytes, as the library reads them
  std::optional<std::int64_t> uncompressedBytes;  ///< of a package to extract
  std::size_t line = 0;                           ///< of the package; without one, of the naming
  std::optional<std::size_t> namingLine;          ///< where the product names the component
  std::optional<std::size_t> files;               ///< the node of the array of files
  Verdicts verdicts;
};

/// A place without a package.
Place placeOf(Side side, std::string_view component);

/// "component_package". \pre there is a package
std::string keyOf(const Place& place);

/// Receives a place, which lives as long as the call.
using VisitPlace = std::function<void(const Place&)>;

}  // namespace update_metadata_tool::places
