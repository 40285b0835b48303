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
    std::size_t line = 0;  ///< of a product, or of a component's package that has a key
  };

  /// A product names a component on a line. Returns the verdict on those of its packages whose keys
  /// no other component has.
  Verdict beginNaming(std::size_t component, const Named& product, std::size_t line);

  /// The verdict on a package of a component; that on the component's naming is `ofNaming`.
  Verdict verdictOn(const NamedPackage& package, const Named& component, const Verdict& ofNaming);

 private:
  struct Naming {
    Named firstProduct;
    std::size_t lastProduct;
    std::size_t lastLine;  // where that product names the component first
  };

  std::unordered_map<std::size_t, Naming> namings_;  // of each component
  std::unordered_map<std::size_t, Named> holders_;   // the component that has a group's key
};

}  // namespace update_metadata_tool::places
