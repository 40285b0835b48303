#include "lint/ReferenceChecks.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "lint/Words.h"

namespace update_metadata_tool {
namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

/// The names of an object's members and the nodes of their keys, in order for look-ups. Of equal
/// names the first in the order in which the library walks objects stays.
class NameTable {
 public:
  struct Entry {
    std::string_view name;
    std::size_t key;
  };

  NameTable() = default;
  NameTable(SourceDocument& document, std::size_t object) {
    document.forEachMember(object, [&](std::size_t key) {
      entries_.push_back({document.nameOf(key), key});
    });
    const SourceTree& tree = document.tree();
    const auto isBefore = [&tree](const Entry& left, const Entry& right) {
      const int order = left.name.compare(right.name);
      return order < 0 || (order == 0 && tree.decoded(left.key) < tree.decoded(right.key));
    };
    std::sort(entries_.begin(), entries_.end(), isBefore);
  }

  const std::vector<Entry>& entries() const { return entries_; }

  /// The index of an entry; kNever if there is none.
  std::size_t find(std::string_view name) const {
    const auto found =
        std::lower_bound(entries_.begin(), entries_.end(), name,
                         [](const Entry& entry, std::string_view key) { return entry.name < key; });
    return found != entries_.end() && found->name == name
               ? static_cast<std::size_t>(found - entries_.begin())
               : kNever;
  }

 private:
  std::vector<Entry> entries_;
};

class ReferenceChecks {
 public:
  ReferenceChecks(SourceDocument& document, const Sections& sections, FindingList& findings)
      : document_(document), tree_(document.tree()), sections_(sections), findings_(findings) {
    if (sections.components) {
      components_ = NameTable(document, *sections.components);
      uses_.resize(components_.entries().size());
    }
  }

  std::vector<ProductWork> check() {
    if (sections_.products) {
      checkProducts();
    }
    if (sections_.components) {
      // A null section says nothing of which components are used; neither does a broken one.
      if (sections_.products && isEveryNameKnown_) {
        checkUnused();
      }
      checkCollisions(components_, "delete");
      checkCollisions(components_, "extract");
    }
    if (sections_.files) {
      const NameTable files(document_, *sections_.files);
      checkCollisions(files, nullptr);
      checkChangedPackages(files);
    }
    return std::move(works_);
  }

 private:
  // When a component is first named, to be deleted and to be extracted: so it comes into the model.
  struct Use {
    std::size_t toDelete = kNever;
    std::size_t toExtract = kNever;
  };

  // The value of a member of an object that is of the right kind; kNever if there is none.
  std::size_t memberOf(std::size_t object, std::string_view name, SourceKind kind) const {
    std::size_t found = kNever;
    if (document_.isA(SourceKind::kObject, object)) {
      document_.forEachMember(object, [&](std::size_t key) {
        if (tree_.decodedInto(key, buffer_) == name && document_.isA(kind, key + 1)) {
          found = key + 1;
        }
      });
    }
    return found;
  }

  // The library walks products in the order of their keys' bytes, and each one's arrays as they
  // stand: that order decides which of two packages with one key is answered.
  void checkProducts() {
    std::vector<std::pair<std::string, std::size_t>> products;
    document_.forEachMember(*sections_.products, [&](std::size_t key) {
      products.emplace_back(tree_.decoded(key), key);
    });
    std::sort(products.begin(), products.end());
    for (const auto& [bytes, key] : products) {
      const std::size_t toDelete = memberOf(key + 1, "delete", SourceKind::kArray);
      const std::size_t toExtract = memberOf(key + 1, "extract", SourceKind::kArray);
      if (toDelete == kNever || toExtract == kNever) {
        isEveryNameKnown_ = false;
        continue;
      }
      const std::string_view product = document_.nameOf(key);
      checkNamed(toDelete, "delete", product, &Use::toDelete);
      checkNamed(toExtract, "extract", product, &Use::toExtract);
      works_.push_back(
          {key, namesPackages(toDelete, "delete"), namesPackages(toExtract, "extract")});
      if (isEmpty(toDelete) && isEmpty(toExtract)) {
        findings_.add(Rule::kProductWithoutWork, tree_, key,
                      {"the product names no component and does not come into the model",
                       "take the product out, or name its components", describeProduct(product)});
      }
    }
  }

  // Tells whether one of the components that an array names has packages.
  bool namesPackages(std::size_t array, const char* member) {
    bool isAny = false;
    document_.forEachElement(array, [&](std::size_t element) {
      if (isAny || !document_.isA(SourceKind::kString, element)) {
        return;
      }
      const std::size_t component = components_.find(document_.nameOf(element));
      if (component != kNever) {
        const std::size_t packages = packagesOf(components_.entries()[component].key + 1, member);
        isAny = packages != kNever && !isEmpty(packages);
      }
    });
    return isAny;
  }

  bool isEmpty(std::size_t container) const { return tree_[container].next == container + 1; }

  void checkNamed(std::size_t array, const char* key, std::string_view product,
                  std::size_t Use::*use) {
    struct Named {
      std::string_view name;
      std::size_t element;
    };
    std::vector<Named> names;
    document_.forEachElement(array, [&](std::size_t element) {
      if (!document_.isA(SourceKind::kString, element)) {
        isEveryNameKnown_ = false;
        return;
      }
      const std::string_view name = document_.nameOf(element);
      names.push_back({name, element});
      const std::size_t component = components_.find(name);
      if (component == kNever) {
        // A section that is missing or broken might describe it.
        if (sections_.components || sections_.areComponentsNull) {
          reportUnknown(element, name, product);
        }
      } else if (uses_[component].*use == kNever) {
        uses_[component].*use = named_++;
      }
    });
    const auto isBefore = [](const Named& left, const Named& right) {
      return std::tie(left.name, left.element) < std::tie(right.name, right.element);
    };
    std::sort(names.begin(), names.end(), isBefore);
    for (std::size_t index = 1; index < names.size(); ++index) {
      if (names[index].name == names[index - 1].name) {
        findings_.add(Rule::kComponentNamedTwice, tree_, names[index].element,
                      {"the component " + quote(names[index].name) + " stands in this '" + key +
                           "' already; the model has it twice, the answers once",
                       "take one of the two out",
                       describeProduct(product),
                       {{tree_[names[index - 1].element].begin, "it stands here, too"}}});
      }
    }
  }

  void reportUnknown(std::size_t element, std::string_view name, std::string_view product) {
    findings_.add(
        Rule::kUnknownComponent, tree_, element,
        {"the component " + quote(name) + " is not described in \"components\" and has no packages",
         "correct the name, or describe the component", describeProduct(product)});
  }

  void checkUnused() {
    for (std::size_t index = 0; index < uses_.size(); ++index) {
      if (uses_[index].toDelete == kNever && uses_[index].toExtract == kNever) {
        const NameTable::Entry& component = components_.entries()[index];
        findings_.add(Rule::kUnusedComponent, tree_, component.key,
                      {"no product names this component, so its packages are in no answer",
                       "name it in a product, or take it out", describeComponent(component.name)});
      }
    }
  }

  // The object of a component's packages: a member of it, or, without a name, itself.
  std::size_t packagesOf(std::size_t component, const char* member) const {
    if (member != nullptr) {
      return memberOf(component, member, SourceKind::kObject);
    }
    return document_.isA(SourceKind::kObject, component) ? component : kNever;
  }

  struct Package {
    const NameTable::Entry* component;
    std::string_view name;
    std::size_t key;
  };

  // A component whose name others continue, and its packages once they are needed.
  struct Beginning {
    const NameTable::Entry* component;
    std::optional<std::size_t> object = {};  // of its packages; kNever if there is none
    std::optional<NameTable> packages = {};
  };

  // Packages of two components have one key if one name continues the other behind an underscore.
  // In order, the names that a name continues come right before it, each continuing the last.
  void checkCollisions(const NameTable& components, const char* member) {
    std::vector<Beginning> beginnings;
    for (const NameTable::Entry& longer : components.entries()) {
      const auto isContinued = [&longer](const NameTable::Entry& shorter) {
        return longer.name.substr(0, shorter.name.size()) == shorter.name;
      };
      while (!beginnings.empty() && !isContinued(*beginnings.back().component)) {
        beginnings.pop_back();
      }
      for (Beginning& beginning : beginnings) {
        const std::size_t length = beginning.component->name.size();
        if (length < longer.name.size() && longer.name[length] == '_') {
          checkPair(beginning, longer, member);
        }
      }
      beginnings.push_back({&longer});
    }
    for (auto& [key, packages] : std::exchange(collisions_, {})) {
      reportCollision(key, packages, member);
    }
  }

  void checkPair(Beginning& beginning, const NameTable::Entry& longer, const char* member) {
    const NameTable::Entry& shorter = *beginning.component;
    if (!beginning.object) {
      beginning.object = packagesOf(shorter.key + 1, member);
    }
    const std::size_t ofShorter = *beginning.object;
    const std::size_t ofLonger = packagesOf(longer.key + 1, member);
    if (ofShorter == kNever || ofLonger == kNever || isEmpty(ofShorter) || isEmpty(ofLonger)) {
      return;
    }
    if (!beginning.packages) {
      beginning.packages = NameTable(document_, ofShorter);
    }
    const NameTable& packages = *beginning.packages;
    const std::string rest = std::string(longer.name.substr(shorter.name.size() + 1)) + '_';
    document_.forEachMember(ofLonger, [&](std::size_t key) {
      const std::string_view package = document_.nameOf(key);
      const std::size_t other = packages.find(rest + std::string(package));
      if (other != kNever) {
        const NameTable::Entry& same = packages.entries()[other];
        std::vector<Package>& colliding =
            collisions_[std::string(longer.name) + '_' + std::string(package)];
        colliding.push_back({&shorter, same.name, same.key});
        colliding.push_back({&longer, package, key});
      }
    });
  }

  // Where in the model a component comes first; kNever if it does not.
  std::size_t rankOf(const NameTable::Entry& component, const char* member) const {
    if (member == nullptr) {
      return 0;  // every component with files comes into the model, in the order of their names
    }
    const Use& use = uses_[components_.find(component.name)];
    return *member == 'd' ? use.toDelete : use.toExtract;
  }

  // Reports all packages of one key but the one that the answers keep, the first in the model.
  void reportCollision(const std::string& key, std::vector<Package>& packages, const char* member) {
    const auto isBefore = [&](const Package& left, const Package& right) {
      const std::size_t leftRank = rankOf(*left.component, member);
      const std::size_t rightRank = rankOf(*right.component, member);
      return std::tie(leftRank, left.component->name) < std::tie(rightRank, right.component->name);
    };
    const auto isSame = [](const Package& left, const Package& right) {
      return left.key == right.key;
    };
    std::sort(packages.begin(), packages.end(), isBefore);
    packages.erase(std::unique(packages.begin(), packages.end(), isSame), packages.end());
    const Package& kept = packages.front();
    for (const Package& lost : packages) {
      if (lost.key != kept.key) {
        reportLost(key, kept, lost, member);
      }
    }
  }

  void reportLost(const std::string& key, const Package& kept, const Package& lost,
                  const char* member) {
    const char* const what = member == nullptr ? "with files to delete"
                             : *member == 'd'  ? "to delete"
                                               : "to extract";
    std::string message = "this package has the same key as " +
                          describePackage(kept.name, what, kept.component->name) + ", " +
                          quote(key);
    if (rankOf(*lost.component, member) == kNever) {
      message += "; no product names both components yet";
    } else if (member == nullptr) {
      message += "; the answers keep the files and the size of that one and lose these";
    } else if (*member == 'd') {
      message += "; the answers hold one key for both";
    } else {
      message += "; the answers keep the sizes of that one and lose these";
    }
    findings_.add(Rule::kPackageKeyCollision, tree_, lost.key,
                  {std::move(message),
                   "rename one of the components or packages",
                   describePackage(lost.name, what, lost.component->name),
                   {{tree_[kept.key].begin, "the package that comes first stands here"}}});
  }

  void checkChangedPackages(const NameTable& files) {
    for (const NameTable::Entry& withFiles : files.entries()) {
      const std::size_t component = components_.find(withFiles.name);
      if (component == kNever || !document_.isA(SourceKind::kObject, withFiles.key + 1)) {
        continue;
      }
      const std::size_t described = components_.entries()[component].key + 1;
      if (uses_[component].toDelete != kNever) {
        checkChanged(withFiles, memberOf(described, "delete", SourceKind::kObject), "deleted");
      }
      if (uses_[component].toExtract != kNever) {
        checkChanged(withFiles, memberOf(described, "extract", SourceKind::kObject), "extracted");
      }
    }
  }

  void checkChanged(const NameTable::Entry& withFiles, std::size_t packages, const char* change) {
    if (packages == kNever) {
      return;
    }
    const NameTable changed(document_, packages);
    document_.forEachMember(withFiles.key + 1, [&](std::size_t key) {
      const std::string_view package = document_.nameOf(key);
      const std::size_t found = changed.find(package);
      if (found != kNever) {
        findings_.add(
            Rule::kFileOfChangedPackage, tree_, key,
            {std::string("single files of this package are to be deleted, and the package is ") +
                 change + ", too",
             "check whether both are meant",
             describePackage(package, "with files to delete", withFiles.name),
             {{tree_[changed.entries()[found].key].begin,
               std::string("the package that is ") + change + " stands here"}}});
      }
    });
  }

  SourceDocument& document_;
  const SourceTree& tree_;
  const Sections& sections_;
  FindingList& findings_;
  NameTable components_;
  std::vector<Use> uses_;  // by the components' places in their table
  std::map<std::string, std::vector<Package>> collisions_;  // by key
  std::vector<ProductWork> works_;
  std::size_t named_ = 0;         // how many components have been named
  bool isEveryNameKnown_ = true;  // no product is broken, so that it might name any component
  mutable std::string buffer_;
};

}  // namespace

std::vector<ProductWork> checkReferences(SourceDocument& document, const Sections& sections,
                                         FindingList& findings) {
  return ReferenceChecks(document, sections, findings).check();
}

}  // namespace update_metadata_tool
