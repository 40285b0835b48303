#pragma once

#include <cstddef>
#include <unordered_map>

#include "places/NamedPackages.h"
#include "places/Place.h"

namespace update_metadata_tool::places {

/// One answer of the library while it is built: the first package with a key is used.
class FirstWins {
 public:
  /// A product names a component. Returns the use of those of its packages whose keys no other
  /// component has.
  Use beginNaming(std::size_t component, std::size_t product);

  /// The use of a package of a component, whose naming has the use `ofNaming`.
  Use useOf(const NamedPackage& package, std::size_t component, Use ofNaming);

  /// Forgets everything.
  void clear();

 private:
  std::unordered_map<std::size_t, std::size_t> products_;    // that named a component last
  std::unordered_map<std::size_t, std::size_t> components_;  // that have the keys of a group
};

}  // namespace update_metadata_tool::places
