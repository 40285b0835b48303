#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

#include "diagnosis/SourceDocument.h"
#include "diagnosis/source/LineIndex.h"
#include "places/Place.h"

namespace update_metadata_tool::places {

/// A package whose key no other component has.
constexpr std::size_t kNoGroup = std::numeric_limits<std::size_t>::max();

/// A package as the document names it.
struct NamedPackage {
  std::string_view name;
  std::size_t key;   ///< the node
  std::size_t line;  ///< of the key
  std::optional<std::int64_t> size;
  std::optional<std::int64_t> uncompressedBytes;
  std::size_t group = kNoGroup;  ///< the same for packages of different components with one key
  bool isNameRepeated = false;   ///< an earlier package of the component is read with this name
};

/// A document with what places need of it.
struct ReadDocument {
  const install::update_metadata_parser::diagnosis::SourceDocument& document;
  const install::update_metadata_parser::diagnosis::source::LineIndex& lines;

  /// The line of a node.
  std::size_t lineOf(std::size_t node) const;

  /// The values of all members with this name and kind, as they are written. Empty if `object` is
  /// not an object.
  std::vector<std::size_t> writtenMembers(
      std::size_t object, std::string_view name,
      install::update_metadata_parser::diagnosis::source::SourceKind kind) const;

  /// The value among them that is read.
  std::optional<std::size_t> member(
      std::size_t object, std::string_view name,
      install::update_metadata_parser::diagnosis::source::SourceKind kind) const;

  /// The section with a name; nothing if it is null.
  std::optional<std::size_t> section(std::string_view name) const;

  /// The package with this key.
  NamedPackage package(std::size_t key, Side side) const;

  /// A product's mention of a component, without a package.
  Place naming(Side side, const ProductOfPlace& product, std::size_t element) const;

  /// Sets what a place shows of its package.
  void setPackage(const NamedPackage& package, Place& place) const;
};

/// The sides for which products name components.
constexpr std::array<Side, 2> kSidesOfProducts = {Side::kDelete, Side::kExtract};

/// The packages of an object, in the order in which the library puts them into its model. n log n.
///
/// \param only  the name of the only package that is wanted, if so
std::vector<NamedPackage> listPackages(const ReadDocument& read, std::size_t object, Side side,
                                       std::optional<std::string_view> only = std::nullopt);

/// Marks packages of different components that have the same key.
///
/// \param names    the components' names, sorted
/// \param objects  their packages; kNever if there are none
/// \param lists    the same packages, as listPackages() lists them
void markEqualKeys(const ReadDocument& read, const std::vector<std::string_view>& names,
                   const std::vector<std::size_t>& objects,
                   const std::vector<std::vector<NamedPackage>*>& lists);

/// Whether "component_package" can be a key, and the name of the package then.
std::optional<std::string_view> packageIn(std::string_view key, std::string_view component);

/// A component that is described in "components".
struct DescribedComponent {
  std::string_view name;

  /// For each of Side::kDelete and Side::kExtract: the object whose packages are used, kNever if
  /// there are none, and the packages.
  std::array<std::size_t, 2> objects;
  std::array<std::vector<NamedPackage>, 2> packages;
};

/// The described components, in the order of their names, each name once.
class DescribedComponents {
 public:
  /// \param onlyKey  leaves out the packages with other keys
  explicit DescribedComponents(const ReadDocument& read,
                               std::optional<std::string_view> onlyKey = std::nullopt);

  const std::vector<DescribedComponent>& all() const { return components_; }

  /// Whether a component has packages for a side, even if they are left out.
  bool hasPackages(std::size_t component, Side side) const;

  /// The index of a component; kNever if it is not described. Logarithmic time.
  std::size_t find(std::string_view name) const;

 private:
  std::vector<DescribedComponent> components_;
};

}  // namespace update_metadata_tool::places
