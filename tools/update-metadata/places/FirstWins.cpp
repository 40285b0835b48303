#include "places/FirstWins.h"

namespace update_metadata_tool::places {

Use FirstWins::beginNaming(std::size_t component, std::size_t product) {
  const auto [place, isNew] = products_.try_emplace(component, product);
  if (isNew) {
    return Use::kUsed;
  }
  if (place->second == product) {
    return Use::kRepeatedComponent;
  }
  place->second = product;
  return Use::kEarlierProduct;
}

Use FirstWins::useOf(const NamedPackage& package, std::size_t component, Use ofNaming) {
  if (package.isNameRepeated) {
    return Use::kEqualKey;
  }
  if (package.group == kNoGroup) {
    return ofNaming;
  }
  const std::size_t holder = components_.try_emplace(package.group, component).first->second;
  return holder == component ? ofNaming : Use::kEqualKey;
}

void FirstWins::clear() {
  products_.clear();
  components_.clear();
}

}  // namespace update_metadata_tool::places
