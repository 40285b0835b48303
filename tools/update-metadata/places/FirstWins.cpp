#include "places/FirstWins.h"

namespace update_metadata_tool::places {

Verdict FirstWins::beginNaming(std::size_t component, const Named& product) {
  const auto [place, isNew] = namings_.try_emplace(component, Naming{product.number, product.name});
  if (isNew) {
    return {Use::kUsed};
  }
  Naming& naming = place->second;
  if (naming.lastProduct == product.number) {
    return {Use::kRepeatedComponent};
  }
  naming.lastProduct = product.number;
  return {Use::kEarlierProduct, naming.firstProduct};
}

Verdict FirstWins::verdictOn(const NamedPackage& package, const Named& component,
                             const Verdict& ofNaming) {
  if (package.isNameRepeated) {
    return {Use::kEqualKey, component.name};
  }
  if (package.group == kNoGroup) {
    return ofNaming;
  }
  const Named& holder = holders_.try_emplace(package.group, component).first->second;
  return holder.number == component.number ? ofNaming : Verdict{Use::kEqualKey, holder.name};
}

}  // namespace update_metadata_tool::places
