#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bench::answers {

/// One package of a component, as the section "components" describes it.
struct Package {
  std::u16string name;
  std::int64_t size;
  std::int64_t uncompressedBytes;
};

/// One described component. Its packages to delete need no size, because no answer contains it.
struct Component {
  std::u16string name;
  std::vector<std::u16string> toDelete;
  std::vector<Package> toExtract;
};

/// The key of a package: the component's name, an underscore and the package's name.
inline std::u16string keyOf(std::u16string_view component, std::u16string_view package) {
  std::u16string key;
  key.reserve(component.size() + 1 + package.size());
  key.append(component).append(1, u'_').append(package);
  return key;
}

}  // namespace bench::answers
