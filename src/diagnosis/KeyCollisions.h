#pragma once

#include <cstddef>
#include <deque>
#include <string_view>
#include <vector>

#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// A component whose packages have keys in one kind of answer.
struct KeyedComponent {
  std::string_view name;  ///< as the library reads it
  std::size_t packages;   ///< the object of its packages; kNever if there is none
};

/// A package with the same key as a package of another component.
struct CollidingPackage {
  std::size_t group;      ///< the same for all packages of one key
  std::size_t component;  ///< its index in the list; of components with equal names, the first
  std::string_view name;  ///< as the library reads it
  std::size_t key;        ///< the node
};

/// Finds packages of different components with the same key "component_package", which is possible
/// if one component's name is another's with an underscore and more appended. In no order, each
/// once; a group has at least two.
///
/// \pre the components are in the order of their names
///
/// No key is composed, so memory is linear in the text even if components with long names have many
/// packages. n log n comparisons of names, where n is the number of packages and of underscores in
/// names.
std::deque<CollidingPackage> findKeyCollisions(const SourceDocument& document,
                                               const std::vector<KeyedComponent>& components);

}  // namespace install::update_metadata_parser::diagnosis
