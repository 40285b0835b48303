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

DocumentShape repeatedShape() {
  DocumentShape shape = shapeOf(4, 40, 400, 40);
  shape.repeats = 64;
  return shape;
}

}  // namespace

const std::vector<Preset>& presets() {
  static const std::vector<Preset> all = {
      {"small", "about 100 KB", shapeOf(12, 44, 8, 12)},
      {"medium", "about 10 MB", shapeOf(100, 3200, 12, 60)},
      {"large", "about 100 MB", shapeOf(200, 32000, 12, 300)},
      {"shared", "a small document, 4 million entries in the answers", shapeOf(500, 300, 20, 200)},
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
