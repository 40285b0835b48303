#pragma once

#include <cstddef>
#include <deque>
#include <string_view>
#include <vector>

#include "lint/SourceDocument.h"

namespace update_metadata_tool::lint {

/// A component whose packages have keys in one kind of answer.
struct KeyedComponent {
  std::string_view name;
  std::size_t packages;  ///< the object of its packages; kNever if there is none
};

/// A package whose key another component's package has, too.
struct CollidingPackage {
  std::size_t group;      ///< the same for all packages of one key
  std::size_t component;  ///< its place in the list; the first of those whose names are equal
  std::string_view name;
  std::size_t key;  ///< the node
};

/// Finds packages of different components with one key "component_package": if one component's name
/// continues another's behind an underscore. In no order, each once; a group has at least two.
///
/// \param components  in the order of their names
///
/// No key is made, so that memory is linear in the text even if long names of components meet many
/// packages. n log n comparisons of names for n packages and underscores in names together.
std::deque<CollidingPackage> findKeyCollisions(const SourceDocument& document,
                                               const std::vector<KeyedComponent>& components);

}  // namespace update_metadata_tool::lint
