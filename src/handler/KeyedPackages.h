#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "handler/PackageKey.h"
#include "mf/zero/AbstractOwnedCollection.h"
#include "mf/zero/Name.h"

namespace install::update_metadata_parser {

/// Gathers packages by their keys, so that an ordered container is built by appending alone.
///
/// `Pkg` is the class of handles of the packages. The gathered packages are read in place: they
/// stay as long as the model's tree does. Memory is linear in what is gathered; a component that
/// repeats an earlier one's packages, as products that share components make them by the thousand,
/// costs a comparison of identities for each package and no memory for any.
template <class Pkg>
class KeyedPackages {
 public:
  struct Entry {
    PackageKey key;
    const typename Pkg::Impl* pkg;
    std::size_t order;  // place of its component in model order
  };

  /// Notes one component with its packages. Components come in model order.
  void addComponent(mf::zero::Name component, const mf::zero::OwnedCollection<Pkg>& pkgs) {
    // Here, in model order: readPackages() goes by the names of the components.
    pkgs.resolvePlaceholders();
    if (!pkgs.empty()) {
      components_.push_back({component, &pkgs, components_.size()});
    }
  }

  /// Reads the packages of the components noted since the last call.
  void readPackages() {
    std::vector<Component> components;
    components.swap(components_);
    const auto byKey = [](const Component& left, const Component& right) {
      const int order = PackageKey{left.name.view(), {}}.compare({right.name.view(), {}});
      return order != 0 ? order < 0 : left.order < right.order;
    };
    if (!std::is_sorted(components.begin(), components.end(), byKey)) {
      std::sort(components.begin(), components.end(), byKey);
    }
    const Component* first = nullptr;  // the first of the components with one name
    for (const Component& component : components) {
      if (first != nullptr && first->name.identity() == component.name.identity()) {
        if (samePackages(*first->pkgs, *component.pkgs)) {
          continue;
        }
      } else {
        first = &component;
      }
      read(component);
    }
    orderOfNext_ += components.size();
  }

  bool empty() const noexcept { return entries_.empty(); }

  /// Returns what was read in ascending order of keys, the first in model order of each key.
  const std::vector<Entry>& inOrder() {
    const auto ascends = [](const Entry& left, const Entry& right) {
      return left.key.compare(right.key) < 0;
    };
    const auto outOfPlace = std::adjacent_find(
        entries_.begin(), entries_.end(),
        [&](const Entry& left, const Entry& right) { return !ascends(left, right); });
    if (outOfPlace != entries_.end()) {
      // Stable, because one component may hold two packages of one name.
      std::stable_sort(entries_.begin(), entries_.end(), [](const Entry& left, const Entry& right) {
        const int order = left.key.compare(right.key);
        return order != 0 ? order < 0 : left.order < right.order;
      });
      const auto end = std::unique(
          entries_.begin(), entries_.end(),
          [](const Entry& left, const Entry& right) { return left.key.compare(right.key) == 0; });
      entries_.erase(end, entries_.end());
    }
    return entries_;
  }

 private:
  struct Component {
    mf::zero::Name name;
    const mf::zero::OwnedCollection<Pkg>* pkgs;
    std::size_t order;
  };

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

  void read(const Component& component) {
    const std::u16string_view name = component.name.view();
    const std::size_t order = orderOfNext_ + component.order;
    // By index and with the size read anew: resolving a placeholder may append.
    for (std::size_t i = 0; i < component.pkgs->size(); ++i) {
      const typename Pkg::Impl& pkg = component.pkgs->readAt(i);
      entries_.push_back({{name, pkg.name().view()}, &pkg, order});
    }
  }

  std::vector<Component> components_;
  std::vector<Entry> entries_;
  std::size_t orderOfNext_ = 0;
};

}  // namespace install::update_metadata_parser
