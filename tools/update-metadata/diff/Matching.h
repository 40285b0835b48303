#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <iterator>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "diff/Difference.h"
#include "summary/ByteSum.h"

namespace update_metadata_tool::diff {

/// The indices of one item in both documents.
struct Match {
  std::optional<std::size_t> before;
  std::optional<std::size_t> after;
};

/// The indices of `items` in the order of their names, and within one name in their own order.
template <class Item, class NameOf>
std::vector<std::size_t> orderByName(const std::vector<Item>& items, NameOf nameOf) {
  std::vector<std::size_t> order(items.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
    return std::invoke(nameOf, items[left]) < std::invoke(nameOf, items[right]);
  });
  return order;
}

/// Pairs items with the same name, in the order of the names. If several have one name, pairs the
/// first with the first, and so on.
template <class Item, class NameOf>
std::vector<Match> match(const std::vector<Item>& before, const std::vector<Item>& after,
                         NameOf nameOf) {
  const std::vector<std::size_t> old = orderByName(before, nameOf);
  const std::vector<std::size_t> recent = orderByName(after, nameOf);
  std::vector<Match> matches;
  for (std::size_t i = 0, j = 0; i != old.size() || j != recent.size();) {
    const auto isFirst = [&](const Item& one, const Item& other) {
      return std::invoke(nameOf, one) < std::invoke(nameOf, other);
    };
    Match found;
    const bool isOnlyOld =
        j == recent.size() || (i != old.size() && isFirst(before[old[i]], after[recent[j]]));
    const bool isOnlyNew =
        i == old.size() || (j != recent.size() && isFirst(after[recent[j]], before[old[i]]));
    if (!isOnlyNew) {
      found.before = old[i++];
    }
    if (!isOnlyOld) {
      found.after = recent[j++];
    }
    matches.push_back(found);
  }
  return matches;
}

/// The item of a match: of the new document if it has one, otherwise of the old one.
template <class Item>
const Item& eitherOf(const Match& found, const std::vector<Item>& before,
                     const std::vector<Item>& after) {
  return found.after ? after[*found.after] : before[*found.before];
}

/// Compares two lists of names, both in ascending order.
template <class Name>
NameChanges compareNames(const std::vector<Name>& before, const std::vector<Name>& after) {
  const auto subtract = [](const std::vector<Name>& names, const std::vector<Name>& others) {
    std::vector<Name> left;
    std::set_difference(names.begin(), names.end(), others.begin(), others.end(),
                        std::back_inserter(left));
    return std::vector<std::u16string>(left.begin(), left.end());
  };
  return {subtract(after, before), subtract(before, after)};
}

/// How much an item differs, by descending importance.
using Extent = std::array<summary::ByteSum, 3>;

/// Puts the items with the largest magnitudes of `extentOf(item)` first; equal ones keep their
/// order.
template <class Item>
void putLargestFirst(std::vector<Item>& items, Extent (*extentOf)(const Item&)) {
  std::vector<std::pair<Extent, std::size_t>> extents;
  extents.reserve(items.size());
  for (const Item& item : items) {
    Extent extent = extentOf(item);
    for (summary::ByteSum& sum : extent) {
      sum = sum.isNegative() ? summary::ByteSum() - sum : sum;
    }
    extents.emplace_back(extent, extents.size());
  }
  std::stable_sort(extents.begin(), extents.end(),
                   [](const auto& left, const auto& right) { return right.first < left.first; });
  std::vector<Item> ordered;
  ordered.reserve(items.size());
  for (const auto& [extent, place] : extents) {
    ordered.push_back(std::move(items[place]));
  }
  items = std::move(ordered);
}

}  // namespace update_metadata_tool::diff
