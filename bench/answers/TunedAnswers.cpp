#include "answers/TunedAnswers.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "answers/Utf16.h"

namespace bench::answers {
namespace {

using Views = std::vector<std::u16string_view>;

// Keeps UTF-16 texts in one piece of memory.
class TextStore {
 public:
  // \pre all texts that will be added have at most this many bytes together
  explicit TextStore(std::size_t bytes) : units_(new char16_t[bytes]), end_(units_.get()) {}

  std::u16string_view add(std::string_view text) {
    char16_t* const begin = end_;
    end_ = writeUtf16(text, end_);
    return viewFrom(begin);
  }

  // Adds the key of a package: the component's name, an underscore and the package's name.
  std::u16string_view addKey(std::u16string_view component, std::string_view package) {
    char16_t* const begin = end_;
    end_ = std::copy(component.begin(), component.end(), end_);
    *end_++ = u'_';
    end_ = writeUtf16(package, end_);
    return viewFrom(begin);
  }

 private:
  std::u16string_view viewFrom(const char16_t* begin) const {
    return {begin, static_cast<std::size_t>(end_ - begin)};
  }

  std::unique_ptr<char16_t[]> units_;
  char16_t* end_;
};

// How many bytes of UTF-8 all texts have that are stored: names of components and keys.
std::size_t bytesOfTexts(const FlatDocument& document) {
  std::size_t bytes = 0;
  for (const FlatDocument::Component& component : document.components) {
    bytes += component.name.size();
    for (const Range range : {component.toDelete, component.toExtract}) {
      for (std::uint32_t i = range.first; i != range.last; ++i) {
        bytes += component.name.size() + 1 + document.packages[i].name.size();
      }
    }
  }
  for (const FlatDocument::ComponentWithFiles& component : document.componentsWithFiles) {
    bytes += component.name.size();
    for (std::uint32_t i = component.packages.first; i != component.packages.last; ++i) {
      bytes += component.name.size() + 1 + document.packagesWithFiles[i].name.size();
    }
  }
  return bytes;
}

KeySet setOf(const Views& sorted) {
  KeySet set;
  for (const std::u16string_view text : sorted) {
    set.emplace_hint(set.end(), text);
  }
  return set;
}

class Builder {
 public:
  explicit Builder(const FlatDocument& document)
      : document_(document), texts_(bytesOfTexts(document)) {}

  Answers build() {
    makeKeys();
    addProducts();
    addFiles();
    return std::move(answers_);
  }

 private:
  using Components = std::vector<std::uint32_t>;

  // Gives every package of a component its key.
  void makeKeys() {
    keys_.resize(document_.packages.size());
    for (const FlatDocument::Component& component : document_.components) {
      const std::u16string_view name = texts_.add(component.name);
      for (const Range range : {component.toDelete, component.toExtract}) {
        for (std::uint32_t i = range.first; i != range.last; ++i) {
          keys_[i] = texts_.addKey(name, document_.packages[i].name);
        }
      }
    }
  }

  void addProducts() {
    const auto places = document_.componentsByName();
    std::vector<bool> isExtracted(document_.components.size());
    Components named;
    for (const FlatDocument::Product& product : document_.products) {
      findNamed(places, product.toDelete, named);
      store(answers_.toDelete, product, named, &FlatDocument::Component::toDelete);
      findNamed(places, product.toExtract, named);
      store(answers_.toExtract, product, named, &FlatDocument::Component::toExtract);
      for (const std::uint32_t component : named) {
        isExtracted[component] = true;
      }
    }
    for (std::size_t component = 0; component < isExtracted.size(); ++component) {
      if (isExtracted[component]) {
        addSizes(document_.components[component]);
      }
    }
  }

  // Finds each described component that the namings in `range` name, once and sorted by name.
  void findNamed(const std::unordered_map<std::string_view, std::uint32_t>& places, Range range,
                 Components& named) const {
    named.clear();
    for (std::uint32_t i = range.first; i != range.last; ++i) {
      const auto found = places.find(document_.namings[i]);
      if (found != places.end()) {
        named.push_back(found->second);
      }
    }
    std::sort(named.begin(), named.end());
    named.erase(std::unique(named.begin(), named.end()), named.end());
  }

  void store(std::map<std::u16string, KeySet>& keysByCode, const FlatDocument::Product& product,
             const Components& named, Range FlatDocument::Component::*packages) const {
    KeySet keys;
    for (const std::uint32_t component : named) {
      const Range range = document_.components[component].*packages;
      for (std::uint32_t i = range.first; i != range.last; ++i) {
        keys.emplace_hint(keys.end(), keys_[i]);
      }
    }
    if (!keys.empty()) {
      keysByCode.emplace_hint(keysByCode.end(), fl::i18n::to_ustring(product.name),
                              std::move(keys));
    }
  }

  void addSizes(const FlatDocument::Component& component) {
    for (std::uint32_t i = component.toExtract.first; i != component.toExtract.last; ++i) {
      const FlatDocument::Package& package = document_.packages[i];
      answers_.sizes.emplace_hint(answers_.sizes.end(), std::piecewise_construct,
                                  std::forward_as_tuple(keys_[i]),
                                  std::forward_as_tuple(package.size, package.uncompressedBytes));
    }
  }

  void addFiles() {
    std::vector<char16_t> units;
    Views files;
    for (const FlatDocument::ComponentWithFiles& component : document_.componentsWithFiles) {
      const std::u16string_view name = texts_.add(component.name);
      for (std::uint32_t i = component.packages.first; i != component.packages.last; ++i) {
        const FlatDocument::PackageWithFiles& package = document_.packagesWithFiles[i];
        convertFiles(package.files, units, files);
        std::sort(files.begin(), files.end());
        answers_.files.emplace_hint(answers_.files.end(), texts_.addKey(name, package.name),
                                    std::make_pair(setOf(files), package.size));
      }
    }
  }

  // Converts the files in `range`, which are needed once, into `units`, where `files` views them.
  void convertFiles(Range range, std::vector<char16_t>& units, Views& files) const {
    std::size_t bytes = 0;
    for (std::uint32_t i = range.first; i != range.last; ++i) {
      bytes += document_.files[i].size();
    }
    units.resize(std::max(units.size(), bytes));
    files.clear();
    char16_t* end = units.data();
    for (std::uint32_t i = range.first; i != range.last; ++i) {
      char16_t* const begin = end;
      end = writeUtf16(document_.files[i], begin);
      files.emplace_back(begin, static_cast<std::size_t>(end - begin));
    }
  }

  const FlatDocument& document_;
  TextStore texts_;
  Views keys_;  // of each package
  Answers answers_;
};

}  // namespace

Answers tunedAnswers(FlatDocument document) {
  document.sortByName();
  return Builder(document).build();
}

}  // namespace bench::answers
