#include "handler/NaiveQueries.h"

namespace test_support {

std::u16string keyOf(const std::u16string& component, const std::u16string& pkg) {
  return component + u"_" + pkg;
}

Keys keysOf(const Product& product, ComponentList list) {
  Keys keys;
  for (const Component& component : product.*list) {
    for (const UpdatePkgData& pkg : component.pkgs) {
      keys.insert(keyOf(component.name, pkg.name));
    }
  }
  return keys;
}

Keys expectedOfCode(const Content& content, ComponentList list, CatalogueHandler& catalogue,
                    const std::u16string& code) {
  Keys result;
  for (const Product& product : content.products) {
    if (product.name == catalogue.getProductName(code, u"there")) {
      for (const std::u16string& key : keysOf(product, list)) {
        result.insert(key);
      }
    }
  }
  return result;
}

KeysByCode expectedByCode(const Content& content, ComponentList list, CatalogueHandler& catalogue) {
  KeysByCode result;
  for (const Product& product : content.products) {
    const Keys keys = keysOf(product, list);
    if (!keys.empty()) {
      const std::u16string code = catalogue.getProductBaseCode(product.name, u"there");
      if (result.count(code) == 0) {
        result[code] = keys;
      }
    }
  }
  return result;
}

Sizes expectedSizes(const Content& content) {
  Sizes result;
  for (const Product& product : content.products) {
    for (const Component& component : product.toExtract) {
      for (const UpdatePkgData& pkg : component.pkgs) {
        const std::u16string key = keyOf(component.name, pkg.name);
        if (result.count(key) == 0) {
          result[key] = {pkg.size, pkg.uncompressedBytes};
        }
      }
    }
  }
  return result;
}

Files expectedFiles(const Content& content) {
  Files result;
  for (const ComponentWithFiles& component : content.withFiles) {
    for (const PkgWithFiles& pkg : component.pkgs) {
      const std::u16string key = keyOf(component.name, pkg.name);
      if (result.count(key) == 0) {
        result[key] = {Keys(pkg.files.begin(), pkg.files.end()), pkg.size};
      }
    }
  }
  return result;
}

}  // namespace test_support
