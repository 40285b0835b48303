#include "handler/PackageKey.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "handler/UnitOrder.h"

namespace install::update_metadata_parser {
namespace {

bool isNotEmpty(std::u16string_view text) noexcept {
  return !text.empty();
}

}  // namespace

void PackageKey::copyTo(std::u16string& text) const {
  text.assign(component).append(kKeySeparator).append(package);
}

int PackageKey::compare(const PackageKey& other) const noexcept {
  // Names are stored once, so names of one component are at the same address.
  const bool sameComponent =
      component.data() == other.component.data() && component.size() == other.component.size();
  if (sameComponent) {
    return compareUnits(package, other.package);
  }
  // Compares piece by piece: the components of the two keys may end at different places.
  std::array<std::u16string_view, 3> left = {component, kKeySeparator, package};
  std::array<std::u16string_view, 3> right = {other.component, kKeySeparator, other.package};
  auto l = left.begin();
  auto r = right.begin();
  while (l != left.end() && r != right.end()) {
    const std::size_t common = std::min(l->size(), r->size());
    if (const int order = compareUnits(l->substr(0, common), r->substr(0, common)); order != 0) {
      return order;
    }
    l->remove_prefix(common);
    r->remove_prefix(common);
    l = std::find_if(l, left.end(), isNotEmpty);
    r = std::find_if(r, right.end(), isNotEmpty);
  }
  return static_cast<int>(l != left.end()) - static_cast<int>(r != right.end());
}

int compareComponents(std::u16string_view left, std::u16string_view right) noexcept {
  const std::size_t common = std::min(left.size(), right.size());
  if (const int order = compareUnits(left.substr(0, common), right.substr(0, common)); order != 0) {
    return order;
  }
  if (left.size() == right.size()) {
    return 0;
  }
  // The shorter name ends where the other one continues: compare its separator there.
  const bool leftIsShorter = left.size() < right.size();
  const int order = compareUnits(kKeySeparator, (leftIsShorter ? right : left).substr(common, 1));
  return leftIsShorter ? (order != 0 ? order : -1) : (order != 0 ? -order : 1);
}

bool isContinued(std::u16string_view shorter, std::u16string_view longer) noexcept {
  return longer.size() > shorter.size() && longer[shorter.size()] == kKeySeparator.front() &&
         compareUnits(longer.substr(0, shorter.size()), shorter) == 0;
}

}  // namespace install::update_metadata_parser
