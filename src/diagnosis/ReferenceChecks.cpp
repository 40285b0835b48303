#include "diagnosis/ReferenceChecks.h"

#include <algorithm>
#include <array>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "diagnosis/KeyCollisions.h"
#include "diagnosis/NameTable.h"
#include "diagnosis/Reach.h"
#include "diagnosis/Resembling.h"
#include "diagnosis/Words.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using source::SourceKind;

class ReferenceChecks {
 public:
  ReferenceChecks(SourceDocument& document, const Sections& sections, FindingList& findings)
      : document_(document), tree_(document.tree()), sections_(sections), findings_(findings) {
    if (sections.components) {
      components_ = NameTable(document, *sections.components);
      uses_.resize(components_.entries().size(), {kNever, kNever});
      std::vector<std::string_view> names;
      for (const NameTable::Entry& component : components_.entries()) {
        packages_.push_back(membersOf(component.key + 1, SourceKind::kObject));
        names.push_back(component.name);
      }
      nearest_ = NearestNames(std::move(names));
    }
  }

  std::vector<ProductWork> check() {
    if (sections_.products) {
      checkProducts();
    }
    if (sections_.components) {
      // A null or malformed section does not show which components are used.
      if (sections_.products && isEveryNameKnown_) {
        checkUnused();
      }
      checkCollisions(kToDelete);
      checkCollisions(kToExtract);
    }
    if (sections_.files) {
      const NameTable files(document_, *sections_.files);
      checkCollisionsOfFiles(files);
      checkChangedPackages(files);
      checkSimilar(files);
    }
    return std::move(works_);
  }

 private:
  enum Answer : std::size_t { kToDelete, kToExtract, kFiles };

  // One position for each of kToDelete and kToExtract, or kNever.
  using Positions = std::array<std::size_t, 2>;

  static constexpr const char* kMembers[] = {"delete", "extract"};

  // The value of a member of an object if it is of the given kind; otherwise kNever.
  std::size_t memberOf(std::size_t object, std::string_view name, SourceKind kind) const {
    std::size_t found = kNever;
    if (document_.isA(SourceKind::kObject, object)) {
      document_.forEachMember(object, [&](std::size_t key) {
        if (document_.bytesOf(key) == name && document_.isA(kind, key + 1)) {
          found = key + 1;
        }
      });
    }
    return found;
  }

  // The values of the members for kToDelete and kToExtract.
  Positions membersOf(std::size_t object, SourceKind kind) const {
    return {memberOf(object, kMembers[kToDelete], kind),
            memberOf(object, kMembers[kToExtract], kind)};
  }

  // The library visits products in the order of their keys' bytes, and the elements of each array
  // in the order of the text. This order decides which of two packages with the same key is used.
  void checkProducts() {
    std::vector<std::tuple<std::string_view, std::size_t, std::size_t>> products;
    std::size_t behind = tree_[*sections_.products].begin;
    document_.forEachMember(*sections_.products, [&](std::size_t key) {
      products.emplace_back(document_.bytesOf(key), key, behind);
      behind = tree_[key + 1].end;
    });
    std::sort(products.begin(), products.end());
    const bool isAnyRepeated = products.size() != countMembers(*sections_.products);
    for (const auto& [bytes, key, behindPrevious] : products) {
      const auto [toDelete, toExtract] = membersOf(key + 1, SourceKind::kArray);
      if (toDelete == kNever || toExtract == kNever) {
        isEveryNameKnown_ = false;
        continue;
      }
      const std::string_view product = document_.nameOf(key);
      checkNamed(toDelete, kToDelete, product);
      checkNamed(toExtract, kToExtract, product);
      works_.push_back(
          {key, namesPackages(toDelete, kToDelete), namesPackages(toExtract, kToExtract)});
      if (isEmpty(toDelete) && isEmpty(toExtract)) {
        findings_.add(
            Rule::kProductWithoutWork, tree_, key,
            {"the product lists no component, so the library skips it",
             "list its components, or remove the product",
             describeProduct(product),
             {},
             // Without the first of two equal keys, the second value would be used.
             isAnyRepeated ? std::nullopt : std::optional(withoutProduct(key, behindPrevious))});
      }
    }
  }

  // The number of members as they are written, with repeated keys.
  std::size_t countMembers(std::size_t object) const {
    std::size_t count = 0;
    document_.forEachWrittenMember(object, [&count](std::size_t /*key*/) { ++count; });
    return count;
  }

  // Removes a product and one of the commas around it. `behindPrevious` is the offset after the
  // member before it.
  Fix withoutProduct(std::size_t key, std::size_t behindPrevious) const {
    if (key != *sections_.products + 1) {
      return {behindPrevious, tree_[key + 1].end - behindPrevious, "", true};
    }
    const std::size_t next = tree_[key + 1].next;
    const bool isOnly = next >= tree_[*sections_.products].next;
    const std::size_t end = isOnly ? tree_[key + 1].end : tree_[next].begin;
    return {tree_[key].begin, end - tree_[key].begin, "", true};
  }

  // Whether any of the components in an array has packages.
  bool namesPackages(std::size_t array, Answer answer) {
    bool isAny = false;
    document_.forEachElement(array, [&](std::size_t element) {
      if (isAny || !document_.isA(SourceKind::kString, element)) {
        return;
      }
      const std::size_t component = components_.find(document_.nameOf(element));
      isAny = component != kNever && hasPackages(packages_[component][answer]);
    });
    return isAny;
  }

  bool isEmpty(std::size_t container) const { return tree_[container].next == container + 1; }

  bool hasPackages(std::size_t packages) const { return packages != kNever && !isEmpty(packages); }

  void checkNamed(std::size_t array, Answer answer, std::string_view product) {
    struct Named {
      std::string_view name;
      std::size_t element;
      std::size_t behindPrevious;  // offset after the element before it
    };
    std::vector<Named> names;
    std::size_t behind = tree_[array].begin;
    document_.forEachElement(array, [&](std::size_t element) {
      const std::size_t behindPrevious = std::exchange(behind, tree_[element].end);
      if (!document_.isA(SourceKind::kString, element)) {
        isEveryNameKnown_ = false;
        return;
      }
      const std::string_view name = document_.nameOf(element);
      names.push_back({name, element, behindPrevious});
      const std::size_t component = components_.find(name);
      if (component == kNever) {
        // A section that is missing or malformed might describe it.
        if (sections_.components || sections_.areComponentsNull) {
          reportUnknown(element, name, product);
        }
        return;
      }
      if (uses_[component][answer] == kNever) {
        uses_[component][answer] = named_++;
      }
      const Positions& packages = packages_[component];
      // A component without any package is a placeholder.
      if (answer == kToDelete && !hasPackages(packages[kToDelete]) &&
          hasPackages(packages[kToExtract])) {
        reportNothingToDelete(document_, element, product, findings_);
      }
    });
    const auto isBefore = [](const Named& left, const Named& right) {
      return std::tie(left.name, left.element) < std::tie(right.name, right.element);
    };
    std::sort(names.begin(), names.end(), isBefore);
    for (std::size_t index = 1; index < names.size(); ++index) {
      if (names[index].name == names[index - 1].name) {
        findings_.add(
            Rule::kComponentNamedTwice, tree_, names[index].element,
            {"duplicate component " + quote(names[index].name) + " in '" + kMembers[answer] +
                 "': it counts once in the answers",
             "remove the duplicate",
             describeProduct(product),
             {{tree_[names[index - 1].element].begin, "the previous mention"}},
             Fix{names[index].behindPrevious,
                 tree_[names[index].element].end - names[index].behindPrevious, "", true}});
      }
    }
  }

  void reportUnknown(std::size_t element, std::string_view name, std::string_view product) {
    const std::optional<std::string_view> nearest = nearest_.find(name, mostEdits(name));
    findings_.add(
        Rule::kUnknownComponent, tree_, element,
        {"component " + quote(name) + " is not described in \"components\", so it has no packages",
         nearest ? "write " + quote(*nearest) +
                       " if that is what you mean; otherwise describe the component"
                 : "correct the name, or describe the component",
         describeProduct(product)});
  }

  // Components with files need no description, so only those with a similar name are reported.
  void checkSimilar(const NameTable& files) {
    constexpr std::size_t kBytesForAnEdit = 8;
    for (const NameTable::Entry& withFiles : files.entries()) {
      const std::string_view name = withFiles.name;
      if (components_.find(name) != kNever) {
        continue;
      }
      const auto nearest =
          nearest_.find(name, std::max<std::size_t>(1, name.size() / kBytesForAnEdit));
      if (nearest && files.find(*nearest) == kNever) {
        reportSimilar(document_, withFiles.key, *nearest, findings_);
      }
    }
  }

  void checkUnused() {
    for (std::size_t index = 0; index < uses_.size(); ++index) {
      const std::size_t component = components_.entries()[index].key;
      if (uses_[index] == Positions{kNever, kNever}) {
        reportUnused(document_, component, findings_);
        continue;
      }
      for (const Answer answer : {kToDelete, kToExtract}) {
        const std::size_t packages = packages_[index][answer];
        if (uses_[index][answer] == kNever && hasPackages(packages)) {
          reportUnreachable(document_, component, packages, kMembers[answer], findings_);
        }
      }
    }
  }

  void checkCollisions(Answer answer) {
    std::vector<KeyedComponent> components;
    std::vector<std::size_t> ranks;
    components.reserve(uses_.size());
    ranks.reserve(uses_.size());
    for (std::size_t index = 0; index < uses_.size(); ++index) {
      components.push_back({components_.entries()[index].name, packages_[index][answer]});
      ranks.push_back(uses_[index][answer]);
    }
    reportCollisions(components, ranks, answer);
  }

  // Every component with files is in the model, in the order of names.
  void checkCollisionsOfFiles(const NameTable& files) {
    std::vector<KeyedComponent> components;
    components.reserve(files.entries().size());
    for (const NameTable::Entry& entry : files.entries()) {
      const bool isObject = document_.isA(SourceKind::kObject, entry.key + 1);
      components.push_back({entry.name, isObject ? entry.key + 1 : kNever});
    }
    reportCollisions(components, std::vector<std::size_t>(components.size()), kFiles);
  }

  // Reports all packages with the same key except the one that the answers use, the first in the
  // model.
  //
  // `ranks` are the positions of the components in the model; kNever if a component is not in it.
  void reportCollisions(const std::vector<KeyedComponent>& components,
                        const std::vector<std::size_t>& ranks, Answer answer) {
    std::deque<CollidingPackage> packages = findKeyCollisions(document_, components);
    const auto isBefore = [&](const CollidingPackage& left, const CollidingPackage& right) {
      return std::tie(left.group, ranks[left.component], left.component) <
             std::tie(right.group, ranks[right.component], right.component);
    };
    std::sort(packages.begin(), packages.end(), isBefore);
    const CollidingPackage* kept = nullptr;
    for (const CollidingPackage& package : packages) {
      if (kept == nullptr || package.group != kept->group) {
        kept = &package;
      } else {
        reportCollision({*kept, components[kept->component].name},
                        {package, components[package.component].name},
                        ranks[package.component] != kNever, answer);
      }
    }
  }

  struct PackageOf {
    const CollidingPackage& package;
    std::string_view component;
  };

  void reportCollision(const PackageOf& used, const PackageOf& ignored, bool isInModel,
                       Answer answer) {
    const char* const what = answer == kFiles      ? "with files to delete"
                             : answer == kToDelete ? "to delete"
                                                   : "to extract";
    std::string message = "this package has the same key, " +
                          quoteKey(ignored.component, ignored.package.name) + ", as " +
                          describePackage(used.package.name, what, used.component);
    if (!isInModel) {
      message += "; no product uses both components yet";
    } else if (answer == kFiles) {
      message += "; the answers contain the files and size of that package, not of this one";
    } else if (answer == kToDelete) {
      message += "; the answers contain the key once";
    } else {
      message += "; the answers contain the sizes of that package, not of this one";
    }
    findings_.add(Rule::kPackageKeyCollision, tree_, ignored.package.key,
                  {std::move(message),
                   "rename a component or a package",
                   describePackage(ignored.package.name, what, ignored.component),
                   {{tree_[used.package.key].begin, "the package that is used"}}});
  }

  // Components with equal names are adjacent and share one table.
  void checkChangedPackages(const NameTable& files) {
    std::size_t last = kNever;
    std::array<NameTable, 2> tables;
    for (const NameTable::Entry& withFiles : files.entries()) {
      const std::size_t component = components_.find(withFiles.name);
      if (component == kNever || !document_.isA(SourceKind::kObject, withFiles.key + 1)) {
        continue;
      }
      if (component != last) {
        for (const Answer answer : {kToDelete, kToExtract}) {
          const std::size_t packages = packages_[component][answer];
          const bool isChanged = uses_[component][answer] != kNever && packages != kNever;
          tables[answer] = isChanged ? NameTable(document_, packages) : NameTable();
        }
        last = component;
      }
      checkChanged(withFiles, tables[kToDelete], "deleted");
      checkChanged(withFiles, tables[kToExtract], "extracted");
    }
  }

  void checkChanged(const NameTable::Entry& withFiles, const NameTable& changed,
                    const char* change) {
    document_.forEachMember(withFiles.key + 1, [&](std::size_t key) {
      const std::string_view package = document_.nameOf(key);
      const std::size_t found = changed.find(package);
      if (found != kNever) {
        findings_.add(
            Rule::kFileOfChangedPackage, tree_, key,
            {std::string("this package has files to delete, but the whole package is also ") +
                 change,
             "check that both are intended",
             describePackage(package, "with files to delete", withFiles.name),
             {{tree_[changed.entries()[found].key].begin,
               std::string("the package that is ") + change}}});
      }
    });
  }

  SourceDocument& document_;
  const source::SourceTree& tree_;
  const Sections& sections_;
  FindingList& findings_;
  NameTable components_;
  NearestNames nearest_;             // of the components
  std::vector<Positions> uses_;      // of each component's first mention, which is its model order
  std::vector<Positions> packages_;  // of the objects with each component's packages
  std::vector<ProductWork> works_;
  std::size_t named_ = 0;         // the number of components mentioned so far
  bool isEveryNameKnown_ = true;  // false if a malformed product might name any component
};

}  // namespace

std::vector<ProductWork> checkReferences(SourceDocument& document, const Sections& sections,
                                         FindingList& findings) {
  return ReferenceChecks(document, sections, findings).check();
}

}  // namespace install::update_metadata_parser::diagnosis
