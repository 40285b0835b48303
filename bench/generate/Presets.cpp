#include "generate/Presets.h"

#include <algorithm>

namespace bench::generate {
namespace {

DocumentShape shapeOf(std::size_t products, std::size_t components, std::size_t packages,
                      std::size_t componentsPerProduct) {
  DocumentShape shape;
  shape.products = products;
  shape.components = components;
  shape.packages = packages;
  shape.componentsPerProduct = componentsPerProduct;
  shape.fileComponents = (components + 3) / 4;
  shape.files = 8;
  return shape;
}

DocumentShape mediumShape() {
  return shapeOf(100, 3200, 12, 60);
}

DocumentShape sharedShape() {
  return shapeOf(500, 300, 20, 200);
}

DocumentShape repeatedShape() {
  DocumentShape shape = shapeOf(4, 40, 400, 40);
  shape.repeats = 64;
  return shape;
}

DocumentShape continued(DocumentShape shape, std::size_t oneIn, std::size_t chain) {
  shape.continued = oneIn;
  shape.chain = chain;
  return shape;
}

}  // namespace

const std::vector<Preset>& presets() {
  static const std::vector<Preset> all = {
      {"small", "about 100 KB", shapeOf(12, 44, 8, 12)},
      {"medium", "about 10 MB", mediumShape()},
      {"medium-continued", "medium, one component in ten named like another with more behind it",
       continued(mediumShape(), 10, 2)},
      {"medium-chains", "medium, all components named in chains of three: a, a_docs, a_docs_docs",
       continued(mediumShape(), 3, 3)},
      {"large", "about 100 MB", shapeOf(200, 32000, 12, 300)},
      {"shared", "a small document, 4 million entries in the answers", sharedShape()},
      {"shared-continued", "shared, one component in ten named like another with more behind it",
       continued(sharedShape(), 10, 2)},
      {"repeated", "each component named 64 times by each product", repeatedShape()},
  };
  return all;
}

const Preset* findPreset(std::string_view name) {
  const auto found = std::find_if(presets().begin(), presets().end(),
                                  [&](const Preset& preset) { return preset.name == name; });
  return found == presets().end() ? nullptr : &*found;
}

}  // namespace bench::generate
