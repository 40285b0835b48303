#include "handler/PackageKey.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace install::update_metadata_parser {
namespace {

constexpr std::u16string_view kSeparator = u"_";

bool isNotEmpty(std::u16string_view text) noexcept {
  return !text.empty();
}

}  // namespace

std::u16string PackageKey::text() const {
  std::u16string text;
  text.reserve(component.size() + kSeparator.size() + package.size());
  text.append(component);
  text.append(kSeparator);
  text.append(package);
  return text;
}

int PackageKey::compare(const PackageKey& other) const noexcept {
  // Names are stored once, so the packages of one component show the same memory.
  const bool sameComponent =
      component.data() == other.component.data() && component.size() == other.component.size();
  if (sameComponent) {
    return package.compare(other.package);
  }
  // Piece against piece: where one key's component ends need not be where the other's does.
  std::array<std::u16string_view, 3> left = {component, kSeparator, package};
  std::array<std::u16string_view, 3> right = {other.component, kSeparator, other.package};
  auto l = left.begin();
  auto r = right.begin();
  while (l != left.end() && r != right.end()) {
    const std::size_t common = std::min(l->size(), r->size());
    if (const int order = l->substr(0, common).compare(r->substr(0, common)); order != 0) {
      return order;
    }
    l->remove_prefix(common);
    r->remove_prefix(common);
    l = std::find_if(l, left.end(), isNotEmpty);
    r = std::find_if(r, right.end(), isNotEmpty);
  }
  return static_cast<int>(l != left.end()) - static_cast<int>(r != right.end());
}

}  // namespace install::update_metadata_parser
