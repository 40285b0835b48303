#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "places/NamedPackages.h"
#include "places/Place.h"

namespace update_metadata_tool::places {

/// One answer of the library while it is built: the first package with a key is used.
class FirstWins {
 public:
  /// A component or a product, with its number.
  struct Named {
    std::size_t number;
    std::string_view name;
  };

  /// A product names a component. Returns the verdict on those of its packages whose keys no other
  /// component has.
  Verdict beginNaming(std::size_t component, const Named& product);

  /// The verdict on a package of a component; that on the component's naming is `ofNaming`.
  Verdict verdictOn(const NamedPackage& package, const Named& component, const Verdict& ofNaming);

 private:
  struct Naming {
    std::size_t lastProduct;
    std::string_view firstProduct;
  };

  std::unordered_map<std::size_t, Naming> namings_;  // of each component
  std::unordered_map<std::size_t, Named> holders_;   // the component that has a group's key
};

}  // namespace update_metadata_tool::places
