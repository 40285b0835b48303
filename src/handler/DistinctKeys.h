#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "handler/PackageKey.h"
#include "handler/PackageList.h"
#include "mf/zero/fields/OwnedCollection.h"
#include "mf/zero/fields/RowList.h"
#include "mf/zero/text/Name.h"

namespace install::update_metadata_parser {

/// Yields the keys of the packages of some components in order, each once: of equal keys that of
/// the first package in model order.
///
/// The keys come from the greatest to the least, because a tree of the standard library compares
/// twice to append a key and once to put it in front: a tenth of the time of an answer.
///
/// Only the packages of components with one name, or whose names continue each other, are merged.
/// Lists are read in place and must not change meanwhile; rows are not turned into elements. Memory
/// is linear in the components, in the model's lists of rows, and in the packages of the largest
/// group that is merged.
template <class Pkg>
class DistinctKeys {
 public:
  /// Adds a component of a list. Components come in model order.
  void addComponent(mf::zero::Name name, const mf::zero::OwnedCollection<Pkg>& pkgs) {
    // Resolved here, in model order, because the lists are later read in another order.
    pkgs.resolvePlaceholders();
    if (!pkgs.empty()) {
      components_.push_back({name, PackageList<Pkg>(pkgs), components_.size()});
    }
  }

  /// The same for a component that is not yet an element.
  void addComponent(const mf::zero::ComponentRow& row) {
    if (row.packages != nullptr) {
      components_.push_back({row.name, PackageList<Pkg>(*row.packages), components_.size()});
    }
  }

  /// Whether no component has a package.
  bool empty() const noexcept { return components_.empty(); }

  /// Forgets the components but keeps the memory for them.
  void clear() noexcept { components_.clear(); }

  /// Calls `visit(key, list, index)` with each key, a string that changes afterwards, and the place
  /// of its package. Constant time for each key, apart from merging, once the components are
  /// sorted.
  template <class Visit>
  void forEachDescending(Visit visit) {
    dropRepeated();
    orderComponents();
    findGroups();
    for (std::size_t end = components_.size(); !groups_.empty(); groups_.pop_back()) {
      const std::size_t first = groups_.back();
      const Component& component = components_[first];
      if (end - first == 1 && component.pkgs.isAscending()) {
        visitOne(component, visit);
      } else {
        merge(first, end);
        for (std::size_t i = entries_.size(); i != 0; --i) {
          const Entry& entry = entries_[i - 1];
          entry.key.copyTo(key_);
          visit(key_, entry.component->pkgs, entry.index);
        }
      }
      end = first;
    }
  }

 private:
  struct Component {
    mf::zero::Name name;
    PackageList<Pkg> pkgs;
    std::size_t order;  // its place in model order
  };

  // The last component that referred to a list of rows.
  struct Use {
    std::size_t walk = 0;
    const mf::zero::InternedString* component = nullptr;
  };

  struct Entry {
    PackageKey key;
    const Component* component;
    std::size_t index;  // of the package
  };

  static bool isSameName(const Component& left, const Component& right) noexcept {
    return left.name.identity() == right.name.identity();
  }

  // Drops each component with the name and the rows of an earlier one: its keys are the same.
  void dropRepeated() {
    ++walk_;
    const auto isRepeated = [this](const Component& component) {
      const mf::zero::RowList* rows = component.pkgs.rows();
      if (rows == nullptr) {
        return false;
      }
      if (rows->number >= lastUse_.size()) {
        lastUse_.resize(rows->number + 1);
      }
      Use& use = lastUse_[rows->number];
      if (use.walk == walk_ && use.component == component.name.identity()) {
        return true;
      }
      use = {walk_, component.name.identity()};
      return false;
    };
    components_.erase(std::remove_if(components_.begin(), components_.end(), isRepeated),
                      components_.end());
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

  // A group begins with its shortest name; all others are that one or continue it.
  void findGroups() {
    groups_.clear();
    for (std::size_t i = 0; i != components_.size(); ++i) {
      const Component* first = groups_.empty() ? nullptr : &components_[groups_.back()];
      if (first == nullptr || !(isSameName(*first, components_[i]) ||
                                isContinued(first->name.view(), components_[i].name.view()))) {
        groups_.push_back(i);
      }
    }
  }

  template <class Visit>
  void visitOne(const Component& component, Visit& visit) {
    key_.assign(component.name.view()).append(kKeySeparator);
    const std::size_t prefix = key_.size();
    for (std::size_t i = component.pkgs.size(); i != 0; --i) {
      key_.resize(prefix);
      key_.append(component.pkgs.nameAt(i - 1));
      visit(key_, component.pkgs, i - 1);
    }
  }

  // Fills entries_ with the packages of the group, in order, each key once.
  void merge(std::size_t first, std::size_t end) {
    const auto precedes = [](const Entry& left, const Entry& right) {
      if (const int order = left.key.compare(right.key); order != 0) {
        return order < 0;
      }
      return left.component->order != right.component->order
                 ? left.component->order < right.component->order
                 : left.index < right.index;
    };
    entries_.clear();
    std::vector<std::size_t> bounds = {0};  // of sorted parts
    for (std::size_t i = first; i != end; ++i) {
      const Component& component = components_[i];
      for (std::size_t index = 0; index != component.pkgs.size(); ++index) {
        const PackageKey key = {component.name.view(), component.pkgs.nameAt(index)};
        entries_.push_back({key, &component, index});
      }
      const auto part = entries_.begin() + static_cast<std::ptrdiff_t>(bounds.back());
      if (!component.pkgs.isAscending()) {
        std::sort(part, entries_.end(), precedes);
      }
      bounds.push_back(entries_.size());
    }
    mergeParts(bounds, precedes);
    entries_.erase(std::unique(entries_.begin(), entries_.end(),
                               [](const Entry& left, const Entry& right) {
                                 return left.key.compare(right.key) == 0;
                               }),
                   entries_.end());
  }

  // Merges neighbors until one part is left: every entry moves once for each doubling.
  template <class Precedes>
  void mergeParts(std::vector<std::size_t>& bounds, Precedes precedes) {
    const auto at = [this](std::size_t place) {
      return entries_.begin() + static_cast<std::ptrdiff_t>(place);
    };
    while (bounds.size() > 2) {
      std::size_t kept = 1;
      for (std::size_t i = 2; i < bounds.size(); i += 2) {
        std::inplace_merge(at(bounds[i - 2]), at(bounds[i - 1]), at(bounds[i]), precedes);
        bounds[kept++] = bounds[i];
      }
      if (bounds.size() % 2 == 0) {
        bounds[kept++] = bounds.back();
      }
      bounds.resize(kept);
    }
  }

  std::size_t walk_ = 0;
  std::vector<Use> lastUse_;  // by the number of the list
  std::vector<Component> components_;
  std::vector<std::size_t> groups_;  // the first component of each
  std::vector<Entry> entries_;
  std::u16string key_;  // the current one
};

}  // namespace install::update_metadata_parser
