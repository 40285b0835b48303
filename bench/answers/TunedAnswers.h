#pragma once

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "answers/Answers.h"
#include "answers/Package.h"
#include "fl/i18n.h"

namespace bench::answers {

/// Builds the answers as fast as possible with the same containers: collects keys in a flat list,
/// sorts it once, and builds each container by appending sorted keys at its end.
///
/// Calls come in the same order as for PlainAnswers.
class TunedAnswers {
 public:
  void beginComponent(std::string_view name) {
    component_ = &components_[name];
    component_->name = fl::i18n::to_ustring(name);
  }
  void addPackageToDelete(std::string_view name) {
    component_->toDelete.push_back(fl::i18n::to_ustring(name));
  }
  void addPackageToExtract(std::string_view name, std::int64_t size,
                           std::int64_t uncompressedBytes) {
    component_->toExtract.push_back({fl::i18n::to_ustring(name), size, uncompressedBytes});
  }
  void endComponent() {
    std::sort(component_->toDelete.begin(), component_->toDelete.end());
    std::sort(component_->toExtract.begin(), component_->toExtract.end(),
              [](const Package& left, const Package& right) { return left.name < right.name; });
  }

  void beginProduct(std::string_view name) { product_ = fl::i18n::to_ustring(name); }
  void addComponentToDelete(std::string_view name) { note(toDelete_, name); }
  void addComponentToExtract(std::string_view name) { note(toExtract_, name); }
  void endProduct() {
    store(answers_.toDelete, toDelete_, &Component::toDelete);
    extracted_.insert(extracted_.end(), toExtract_.begin(), toExtract_.end());
    store(answers_.toExtract, toExtract_, &Component::toExtract);
  }

  void beginComponentWithFiles(std::string_view name) {
    componentWithFiles_ = fl::i18n::to_ustring(name);
  }
  void beginPackageWithFiles(std::string_view name, std::int64_t size) {
    packagesWithFiles_.push_back(
        {keyOf(componentWithFiles_, fl::i18n::to_ustring(name)), size, {}});
  }
  void addFile(std::string_view path) {
    packagesWithFiles_.back().files.push_back(fl::i18n::utf8_to_ustring(path));
  }
  void endPackageWithFiles() {}

  Answers finish() {
    storeSizes();
    storeFiles();
    return std::move(answers_);
  }

 private:
  using Components = std::vector<const Component*>;

  struct PackageWithFiles {
    std::u16string key;
    std::int64_t size;
    std::vector<std::u16string> files;
  };

  void note(Components& components, std::string_view name) const {
    const auto found = components_.find(name);
    if (found != components_.end()) {
      components.push_back(&found->second);
    }
  }

  // Keeps each component once, sorted by name. Keys are then sorted, too, except where one name
  // continues another.
  static void order(Components& components) {
    std::sort(components.begin(), components.end(), std::less<>());
    components.erase(std::unique(components.begin(), components.end()), components.end());
    std::sort(
        components.begin(), components.end(),
        [](const Component* left, const Component* right) { return left->name < right->name; });
  }

  static const std::u16string& nameOf(const std::u16string& package) { return package; }
  static const std::u16string& nameOf(const Package& package) { return package.name; }

  template <class Packages>
  void store(std::map<std::u16string, KeySet>& keysByCode, Components& components,
             Packages Component::*packages) {
    order(components);
    keys_.clear();
    for (const Component* component : components) {
      for (const auto& package : component->*packages) {
        keys_.push_back(keyOf(component->name, nameOf(package)));
      }
    }
    components.clear();
    if (keys_.empty()) {
      return;
    }
    if (!std::is_sorted(keys_.begin(), keys_.end())) {
      std::sort(keys_.begin(), keys_.end());
    }
    // Of equal neighbors, the first is inserted.
    KeySet set;
    for (std::u16string& key : keys_) {
      set.emplace_hint(set.end(), std::move(key));
    }
    keysByCode.try_emplace(product_, std::move(set));
  }

  void storeSizes() {
    using Sizes = std::pair<std::int64_t, std::int64_t>;
    order(extracted_);
    std::vector<std::pair<std::u16string, Sizes>> sizes;
    for (const Component* component : extracted_) {
      for (const Package& package : component->toExtract) {
        sizes.emplace_back(keyOf(component->name, package.name),
                           Sizes(package.size, package.uncompressedBytes));
      }
    }
    sortByKey(sizes, [](const auto& entry) -> const std::u16string& { return entry.first; });
    for (auto& [key, pair] : sizes) {
      answers_.sizes.try_emplace(answers_.sizes.end(), std::move(key), pair);
    }
  }

  void storeFiles() {
    sortByKey(packagesWithFiles_,
              [](const PackageWithFiles& package) -> const std::u16string& { return package.key; });
    for (PackageWithFiles& package : packagesWithFiles_) {
      std::sort(package.files.begin(), package.files.end());
      KeySet files;
      for (std::u16string& file : package.files) {
        files.emplace_hint(files.end(), std::move(file));
      }
      answers_.files.try_emplace(answers_.files.end(), std::move(package.key), std::move(files),
                                 package.size);
    }
  }

  template <class Entry, class KeyOf>
  static void sortByKey(std::vector<Entry>& entries, KeyOf key) {
    const auto precedes = [&](const Entry& left, const Entry& right) {
      return key(left) < key(right);
    };
    if (!std::is_sorted(entries.begin(), entries.end(), precedes)) {
      std::stable_sort(entries.begin(), entries.end(), precedes);
    }
  }

  std::unordered_map<std::string_view, Component> components_;
  Component* component_ = nullptr;
  std::u16string product_;
  Components toDelete_;
  Components toExtract_;
  Components extracted_;
  std::vector<std::u16string> keys_;
  std::u16string componentWithFiles_;
  std::vector<PackageWithFiles> packagesWithFiles_;
  Answers answers_;
};

}  // namespace bench::answers
