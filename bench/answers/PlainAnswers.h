#pragma once

#include <string_view>
#include <unordered_map>
#include <utility>

#include "answers/Answers.h"
#include "answers/Package.h"
#include "fl/i18n.h"

namespace bench::answers {

/// Builds the answers in the obvious way, as anyone would in an hour: each key is inserted into its
/// container as soon as it is read.
///
/// Components come first, then products, then components with files. The names of components must
/// remain valid until the last product has been read.
class PlainAnswers {
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
  void endComponent() {}

  void beginProduct(std::string_view name) { product_ = fl::i18n::to_ustring(name); }
  void addComponentToDelete(std::string_view name) {
    const auto found = components_.find(name);
    if (found == components_.end()) {
      return;
    }
    for (const std::u16string& package : found->second.toDelete) {
      toDelete_.insert(keyOf(found->second.name, package));
    }
  }
  void addComponentToExtract(std::string_view name) {
    const auto found = components_.find(name);
    if (found == components_.end()) {
      return;
    }
    for (const Package& package : found->second.toExtract) {
      std::u16string key = keyOf(found->second.name, package.name);
      toExtract_.insert(key);
      answers_.sizes.try_emplace(std::move(key), package.size, package.uncompressedBytes);
    }
  }
  void endProduct() {
    store(answers_.toDelete, toDelete_);
    store(answers_.toExtract, toExtract_);
  }

  void beginComponentWithFiles(std::string_view name) {
    componentWithFiles_ = fl::i18n::to_ustring(name);
  }
  void beginPackageWithFiles(std::string_view name, std::int64_t size) {
    packageWithFiles_ = keyOf(componentWithFiles_, fl::i18n::to_ustring(name));
    size_ = size;
  }
  void addFile(std::string_view path) { files_.insert(fl::i18n::utf8_to_ustring(path)); }
  void endPackageWithFiles() {
    answers_.files.try_emplace(packageWithFiles_, std::move(files_), size_);
    files_.clear();
  }

  Answers finish() { return std::move(answers_); }

 private:
  void store(std::map<std::u16string, KeySet>& keysByCode, KeySet& keys) const {
    if (!keys.empty()) {
      keysByCode.try_emplace(product_, std::move(keys));
    }
    keys.clear();
  }

  std::unordered_map<std::string_view, Component> components_;
  Component* component_ = nullptr;
  std::u16string product_;
  std::u16string componentWithFiles_;
  KeySet toDelete_;
  KeySet toExtract_;
  std::u16string packageWithFiles_;
  std::int64_t size_ = 0;
  KeySet files_;
  Answers answers_;
};

}  // namespace bench::answers
