#include "places/FirstWins.h"

namespace update_metadata_tool::places {

Verdict FirstWins::beginNaming(std::size_t component, const Named& product, std::size_t line) {
  const auto [place, isNew] =
      namings_.try_emplace(component, Naming{product, product.number, line});
  if (isNew) {
    return {Use::kUsed};
  }
  Naming& naming = place->second;
  if (naming.lastProduct == product.number) {
    return {Use::kRepeatedComponent, {}, naming.lastLine};
  }
  naming.lastProduct = product.number;
  naming.lastLine = line;
  return {Use::kEarlierProduct, naming.firstProduct.name, naming.firstProduct.line};
}

Verdict FirstWins::verdictOn(const NamedPackage& package, const Named& component,
                             const Verdict& ofNaming) {
  if (package.isNameRepeated) {
    return {Use::kEqualKey, component.name};
  }
  if (package.group == kNoGroup) {
    return ofNaming;
  }
  const Named self = {component.number, component.name, package.line};
  const Named& holder = holders_.try_emplace(package.group, self).first->second;
  return holder.number == component.number ? ofNaming
                                           : Verdict{Use::kEqualKey, holder.name, holder.line};
}

}  // namespace update_metadata_tool::places
