#include "answers/PlainAnswers.h"

#include <unordered_map>
#include <utility>

#include "answers/Utf16.h"

namespace bench::answers {
namespace {

void append(std::u16string& text, std::string_view more) {
  const std::size_t size = text.size();
  text.resize(size + more.size());
  const char16_t* const end = writeUtf16(more, text.data() + size);
  text.resize(static_cast<std::size_t>(end - text.data()));
}

std::u16string toUtf16(std::string_view text) {
  std::u16string result;
  append(result, text);
  return result;
}

// The key of a package: the component's name, an underscore and the package's name.
std::u16string keyOf(std::string_view component, std::string_view package) {
  std::u16string key;
  key.reserve(component.size() + 1 + package.size());
  append(key, component);
  key.push_back(u'_');
  append(key, package);
  return key;
}

class Builder {
 public:
  explicit Builder(const FlatDocument& document)
      : document_(document), components_(document.componentsByName()) {}

  Answers build() {
    for (const FlatDocument::Product& product : document_.products) {
      addToDelete(product);
      addToExtract(product);
    }
    for (const FlatDocument::ComponentWithFiles& component : document_.componentsWithFiles) {
      addFiles(component);
    }
    return std::move(answers_);
  }

 private:
  // Calls `visit` with each described component that the namings in `range` name.
  template <class Visit>
  void forEachNamed(Range range, Visit visit) const {
    for (std::uint32_t i = range.first; i != range.last; ++i) {
      const auto found = components_.find(document_.namings[i]);
      if (found != components_.end()) {
        visit(document_.components[found->second]);
      }
    }
  }

  void addToDelete(const FlatDocument::Product& product) {
    KeySet keys;
    forEachNamed(product.toDelete, [&](const FlatDocument::Component& component) {
      for (std::uint32_t i = component.toDelete.first; i != component.toDelete.last; ++i) {
        keys.insert(keyOf(component.name, document_.packages[i].name));
      }
    });
    if (!keys.empty()) {
      answers_.toDelete.try_emplace(toUtf16(product.name), std::move(keys));
    }
  }

  void addToExtract(const FlatDocument::Product& product) {
    KeySet keys;
    forEachNamed(product.toExtract, [&](const FlatDocument::Component& component) {
      for (std::uint32_t i = component.toExtract.first; i != component.toExtract.last; ++i) {
        const FlatDocument::Package& package = document_.packages[i];
        std::u16string key = keyOf(component.name, package.name);
        answers_.sizes.try_emplace(key, package.size, package.uncompressedBytes);
        keys.insert(std::move(key));
      }
    });
    if (!keys.empty()) {
      answers_.toExtract.try_emplace(toUtf16(product.name), std::move(keys));
    }
  }

  void addFiles(const FlatDocument::ComponentWithFiles& component) {
    for (std::uint32_t i = component.packages.first; i != component.packages.last; ++i) {
      const FlatDocument::PackageWithFiles& package = document_.packagesWithFiles[i];
      KeySet files;
      for (std::uint32_t file = package.files.first; file != package.files.last; ++file) {
        files.insert(toUtf16(document_.files[file]));
      }
      answers_.files.try_emplace(keyOf(component.name, package.name), std::move(files),
                                 package.size);
    }
  }

  const FlatDocument& document_;
  std::unordered_map<std::string_view, std::uint32_t> components_;
  Answers answers_;
};

}  // namespace

Answers plainAnswers(FlatDocument document) {
  document.sortByName();
  return Builder(document).build();
}

}  // namespace bench::answers
