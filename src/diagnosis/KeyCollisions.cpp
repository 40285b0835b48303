#include "diagnosis/KeyCollisions.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "diagnosis/NameTable.h"
#include "diagnosis/Text.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

// Compares a name with `rest` and an underscore after it.
bool isBeforeKeyOf(std::string_view name, std::string_view rest) {
  const int order = name.substr(0, rest.size()).compare(rest);
  if (order != 0) {
    return order < 0;
  }
  return name.size() == rest.size() || static_cast<unsigned char>(name[rest.size()]) < '_';
}

class KeyCollisions {
 public:
  KeyCollisions(const SourceDocument& document, const std::vector<KeyedComponent>& components)
      : document_(document), components_(components), isFound_(document.tree().nodes().size()) {}

  // In sorted order, the prefixes of a name come right before it, each a prefix of the next.
  std::deque<CollidingPackage> find() {
    std::vector<Group> beginnings;
    for (std::size_t first = 0; first < components_.size();) {
      Group longer = takeGroup(first);
      while (!beginnings.empty() && !startsWith(longer.name, beginnings.back().name)) {
        beginnings.pop_back();
      }
      if (longer.isEmpty) {
        continue;
      }
      for (Group& shorter : beginnings) {
        if (longer.name[shorter.name.size()] == '_') {
          comparePackages(shorter, longer);
        }
      }
      beginnings.push_back(std::move(longer));
    }
    return std::move(found_);
  }

 private:
  // Components with the same name, and their packages once they are needed.
  struct Group {
    std::size_t first;
    std::size_t last;
    std::string_view name;
    bool isEmpty;  // none of them has packages
    std::optional<NameTable> packages = {};
  };

  bool hasPackages(std::size_t component) const {
    const std::size_t object = components_[component].packages;
    return object != kNever && document_.tree()[object].next != object + 1;
  }

  // The components with the name of the one at `first`, which is advanced past them.
  Group takeGroup(std::size_t& first) const {
    Group group{first, first, components_[first].name, true};
    for (; first < components_.size() && components_[first].name == group.name; ++first) {
      group.isEmpty = group.isEmpty && !hasPackages(first);
    }
    group.last = first;
    return group;
  }

  const NameTable& packagesOf(Group& group) const {
    if (!group.packages) {
      group.packages = NameTable::ofObjects(document_, [&](const auto& visit) {
        for (std::size_t component = group.first; component != group.last; ++component) {
          if (hasPackages(component)) {
            visit(components_[component].packages);
          }
        }
      });
    }
    return *group.packages;
  }

  // Only packages of the shorter name that begin with what the longer name adds can have its keys.
  // Each has an underscore after that, so it is compared with few longer names.
  void comparePackages(Group& shorter, Group& longer) {
    const std::string_view rest = longer.name.substr(shorter.name.size() + 1);
    const std::vector<NameTable::Entry>& packages = packagesOf(shorter).entries();
    auto package = std::lower_bound(packages.begin(), packages.end(), rest,
                                    [](const NameTable::Entry& entry, std::string_view key) {
                                      return isBeforeKeyOf(entry.name, key);
                                    });
    const auto isContinued = [rest](std::string_view name) {
      return name.size() > rest.size() && name[rest.size()] == '_' && startsWith(name, rest);
    };
    for (; package != packages.end() && isContinued(package->name); ++package) {
      const NameTable& others = packagesOf(longer);
      const std::size_t other = others.find(package->name.substr(rest.size() + 1));
      if (other != kNever) {
        add(shorter, *package, longer, others.entries()[other]);
      }
    }
  }

  // The component with the shortest name comes first, and with it the package that represents the
  // key.
  void add(const Group& shorter, const NameTable::Entry& package, const Group& longer,
           const NameTable::Entry& other) {
    if (isFound_[other.key]) {
      return;
    }
    if (!isFound_[package.key]) {
      isFound_[package.key] = true;
      found_.push_back({package.key, shorter.first, package.name, package.key});
    }
    isFound_[other.key] = true;
    found_.push_back({package.key, longer.first, other.name, other.key});
  }

  const SourceDocument& document_;
  const std::vector<KeyedComponent>& components_;
  std::vector<bool> isFound_;  // by the node of a package's key
  std::deque<CollidingPackage> found_;
};

}  // namespace

std::deque<CollidingPackage> findKeyCollisions(const SourceDocument& document,
                                               const std::vector<KeyedComponent>& components) {
  return KeyCollisions(document, components).find();
}

}  // namespace install::update_metadata_parser::diagnosis
