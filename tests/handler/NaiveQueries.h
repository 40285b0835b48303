#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "install/update_metadata_parser/UpdatePkgData.h"
#include "support/CatalogueHandler.h"

// The six queries as a plain computation that follows the contract step by step and does not use
// the model.
namespace test_support {

using install::update_metadata_parser::UpdatePkgData;

using Keys = std::set<std::u16string>;
using KeysByCode = std::map<std::u16string, Keys>;
using Sizes = std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>;
using Files = std::map<std::u16string, std::pair<Keys, std::int64_t>>;

// The content of a model as plain values, in model order.
struct Component {
  std::u16string name;
  std::vector<UpdatePkgData> pkgs;
};

struct Product {
  std::u16string name;
  std::vector<Component> toDelete;
  std::vector<Component> toExtract;
};

struct PkgWithFiles {
  std::u16string name;
  std::int64_t size;
  std::vector<std::u16string> files;
};

struct ComponentWithFiles {
  std::u16string name;
  std::vector<PkgWithFiles> pkgs;
};

struct Content {
  std::vector<Product> products;
  std::vector<ComponentWithFiles> withFiles;
};

using ComponentList = std::vector<Component> Product::*;

Keys expectedOfCode(const Content& content, ComponentList list, CatalogueHandler& catalogue,
                    const std::u16string& code);
KeysByCode expectedByCode(const Content& content, ComponentList list, CatalogueHandler& catalogue);
Sizes expectedSizes(const Content& content);
Files expectedFiles(const Content& content);

}  // namespace test_support
