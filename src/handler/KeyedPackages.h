#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "handler/PackageKey.h"
#include "mf/zero/fields/OwnedCollection.h"
#include "mf/zero/text/Name.h"

namespace install::update_metadata_parser {

/// Gathers components and tells the keys of their packages, from the last to the first, so that
/// ordered containers are mostly built by putting what comes next in front: a tree of the standard
/// library compares keys once there, and twice at its end.
///
/// `Pkg` is the class of handles of the packages. What is gathered is read in place: it stays as
/// long as the model's tree does. Memory is linear in the components, and for
/// forEachInReversedModelOrder() in their packages, too, if two names continue each other. A
/// component that repeats an earlier one's packages, as products that share components make them
/// by the thousand, costs a comparison of identities for each package.
template <class Pkg>
class KeyedPackages {
 public:
  /// A package, as it is read in place.
  using Element = typename Pkg::Impl;

  /// Notes one component with its packages. Components come in model order.
  void addComponent(mf::zero::Name component, const mf::zero::OwnedCollection<Pkg>& pkgs) {
    // Here, in model order: later they are read in another one.
    pkgs.resolvePlaceholders();
    if (!pkgs.empty()) {
      components_.push_back({component, &pkgs, components_.size()});
    }
  }

  /// Tells whether no component with packages has been noted.
  bool empty() const noexcept { return components_.empty(); }

  /// Calls `visit` with each key, a string that it may keep, and its package: component by
  /// component, in descending order of keys but for those of components whose names continue each
  /// other's, and for packages that do not come in order. Of packages with one key the first of its
  /// component comes last.
  template <class Visit>
  void forEachReversed(Visit visit) {
    orderComponents();
    std::u16string text;
    auto end = components_.end();  // of the components with one name
    while (end != components_.begin()) {
      auto first = end - 1;
      while (first != components_.begin() && isSameName(first[-1], *first)) {
        --first;
      }
      text.assign(first->name.view()).append(kKeySeparator);
      const auto visitPkg = [&](const Element& pkg) {
        const std::u16string_view name = pkg.name().view();
        std::u16string key;
        key.reserve(text.size() + name.size());
        key.append(text).append(name);
        visit(std::move(key), pkg);
      };
      while (--end != first) {
        if (!samePackages(*first->pkgs, *end->pkgs)) {
          forEachOf(*end, visitPkg);
        }
      }
      forEachOf(*first, visitPkg);
    }
  }

  /// Calls `visit` as forEachReversed() does, but so that of all packages with one key the first in
  /// model order comes last.
  template <class Visit>
  void forEachInReversedModelOrder(Visit visit) {
    orderComponents();
    if (!namesContinueEachOther()) {
      // Then no two components of different names have a key in common.
      forEachReversed(visit);
      return;
    }
    std::vector<Entry> entries;
    for (const Component& component : components_) {
      forEachOf(component, [&](const Element& pkg) {
        entries.push_back({{component.name.view(), pkg.name().view()}, &pkg, component.order});
      });
    }
    // Stable, because one component may hold two packages of one name, the last of which comes
    // first.
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
      const int order = left.key.compare(right.key);
      return order != 0 ? order > 0 : left.order > right.order;
    });
    for (const Entry& entry : entries) {
      visit(entry.key.text(), *entry.pkg);
    }
  }

 private:
  struct Component {
    mf::zero::Name name;
    const mf::zero::OwnedCollection<Pkg>* pkgs;
    std::size_t order;  // its place in model order
  };

  struct Entry {
    PackageKey key;
    const Element* pkg;
    std::size_t order;  // of its component
  };

  static bool isSameName(const Component& left, const Component& right) noexcept {
    return left.name.identity() == right.name.identity();
  }

  // Calls `visit` with each package of a component, from the last to the first.
  template <class Visit>
  static void forEachOf(const Component& component, Visit visit) {
    for (std::size_t i = component.pkgs->size(); i != 0; --i) {
      visit(component.pkgs->readAt(i - 1));
    }
  }

  void orderComponents() {
    const auto precedes = [](const Component& left, const Component& right) {
      const int order =
          isSameName(left, right) ? 0 : compareComponents(left.name.view(), right.name.view());
      return order != 0 ? order < 0 : left.order < right.order;
    };
    if (!std::is_sorted(components_.begin(), components_.end(), precedes)) {
      std::sort(components_.begin(), components_.end(), precedes);
    }
  }

  // Tells whether some name is another one, an underscore and more. In order, the one behind the
  // shorter of such two names is such a name as well.
  bool namesContinueEachOther() const noexcept {
    return std::adjacent_find(components_.begin(), components_.end(),
                              [](const Component& left, const Component& right) {
                                return isContinued(left.name.view(), right.name.view());
                              }) != components_.end();
  }

  static bool samePackages(const mf::zero::OwnedCollection<Pkg>& left,
                           const mf::zero::OwnedCollection<Pkg>& right) {
    const std::size_t size = left.size();
    if (size != right.size()) {
      return false;
    }
    for (std::size_t i = 0; i != size; ++i) {
      if (left.readAt(i).name().identity() != right.readAt(i).name().identity()) {
        return false;
      }
    }
    return true;
  }

  std::vector<Component> components_;
};

}  // namespace install::update_metadata_parser
