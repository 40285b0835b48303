#include "places/ModelPlaces.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnosis/NameTable.h"
#include "output/Text.h"
#include "places/FirstWins.h"

namespace update_metadata_tool::places {
namespace {

namespace diagnosis = install::update_metadata_parser::diagnosis;
using diagnosis::kNever;
using diagnosis::NameTable;
using diagnosis::source::SourceKind;

class ModelPlaces {
 public:
  ModelPlaces(const ReadDocument& read, const DescribedComponents& components,
              const ProductLookUp& products, const VisitPlace& visit)
      : read_(read),
        components_(components),
        products_(products),
        visit_(visit),
        isNamed_(components.all().size()) {}

  void walk() {
    walkProducts();
    walkFiles();
    visitUnusedComponents();
  }

 private:
  // A product of the model.
  struct Product {
    std::string_view name;
    std::size_t key;
    bool isNameShared;  // another product is read with this name
  };

  // How the answers treat the packages of one side of a product.
  struct Answers {
    Verdict allProducts;  // kUsed if the product's packages are used
    Verdict oneProduct;
    FirstWins* inAllProducts;
    FirstWins* inOneProduct;
  };

  std::vector<Product> listProducts() const {
    std::vector<Product> products;
    const std::optional<std::size_t> object = read_.section("products");
    if (!object) {
      return products;
    }
    const NameTable table(read_.document, *object);
    for (const NameTable::Entry& entry : table.entries()) {
      const bool isShared = !products.empty() && products.back().name == entry.name;
      if (isShared) {
        products.back().isNameShared = true;
      }
      products.push_back({entry.name, entry.key, isShared});
    }
    std::sort(products.begin(), products.end(), [&](const Product& left, const Product& right) {
      return read_.document.bytesOf(left.key) < read_.document.bytesOf(right.key);
    });
    return products;
  }

  void walkProducts() {
    std::size_t number = 0;
    for (const Product& product : listProducts()) {
      walkProduct(product, number++);
    }
  }

  void walkProduct(const Product& product, std::size_t number) {
    const std::array<std::optional<std::size_t>, 2> lists = {
        read_.member(product.key + 1, "delete", SourceKind::kArray),
        read_.member(product.key + 1, "extract", SourceKind::kArray)};
    const std::array<bool, 2> hasPackages = {namesPackages(lists[0], Side::kDelete),
                                             namesPackages(lists[1], Side::kExtract)};
    const std::u16string name = output::toUtf16(product.name);
    const std::u16string code = products_.baseCodeOf(name);
    const std::u16string chosen = products_.nameOf(code);
    const std::string chosenName = output::toUtf8(chosen);
    const bool isKnown = products_.isKnown(code);
    const ProductOfPlace shown = products_.show(product.name, code);
    const FirstWins::Named named = {number, product.name, read_.lineOf(product.key)};
    for (const Side side : kSidesOfProducts) {
      const auto index = static_cast<std::size_t>(side);
      FirstWins ofProduct;
      FirstWins ofName;
      Answers answers = {{Use::kUsed}, {Use::kUsed}, &ofProduct, &ofName};
      if (hasPackages[index]) {
        const auto [holder, isFirst] = codes_[index].try_emplace(code, named);
        if (!isFirst) {
          answers.allProducts = {isKnown ? Use::kEarlierProduct : Use::kUnknownProduct,
                                 holder->second.name, holder->second.line};
        }
      }
      if (chosen != name) {
        answers.oneProduct = {isKnown ? Use::kOtherProduct : Use::kUnknownProduct, chosenName};
      }
      if (product.isNameShared) {
        answers.inOneProduct = &namesakes_[index][product.name];
      }
      if (lists[index]) {
        read_.document.forEachElement(*lists[index], [&](std::size_t element) {
          walkNaming(side, shown, named, element, answers);
        });
      }
    }
  }

  bool namesPackages(std::optional<std::size_t> list, Side side) {
    bool isAny = false;
    if (list) {
      read_.document.forEachElement(*list, [&](std::size_t element) {
        if (!isAny) {
          const std::size_t component = components_.find(read_.document.nameOf(element));
          isAny = component != kNever && components_.hasPackages(component, side);
        }
      });
    }
    return isAny;
  }

  void walkNaming(Side side, const ProductOfPlace& product, const FirstWins::Named& named,
                  std::size_t element, const Answers& answers) {
    const std::size_t component = components_.find(read_.document.nameOf(element));
    Place place = read_.naming(side, product, element);
    if (component == kNever) {
      place.verdicts = verdictsOf(side, Use::kUndescribedComponent);
      visit_(place);
      return;
    }
    isNamed_[component][static_cast<std::size_t>(side)] = true;
    const FirstWins::Named holder = {component, components_.all()[component].name};
    const Verdict inAll = answers.inAllProducts->beginNaming(component, named, place.line);
    const Verdict inOne = answers.inOneProduct->beginNaming(component, named, place.line);
    const Verdict inSizes =
        side == Side::kExtract ? sizes_.beginNaming(component, named, place.line) : Verdict();
    for (const NamedPackage& package : packagesOf(component, side)) {
      const Verdict all = answers.inAllProducts->verdictOn(package, holder, inAll);
      const Verdict one = answers.inOneProduct->verdictOn(package, holder, inOne);
      const bool isListed = answers.allProducts.use == Use::kUsed;
      place.verdicts.allProducts = isListed ? all : answers.allProducts;
      place.verdicts.oneProduct = answers.oneProduct.use == Use::kUsed ? one : answers.oneProduct;
      if (side == Side::kExtract) {
        place.verdicts.sizes = sizes_.verdictOn(package, holder, inSizes);
      }
      visitPackage(package, place);
    }
  }

  void walkFiles() {
    const std::optional<std::size_t> object = read_.section("componentsWithFilesDeleted");
    if (!object) {
      return;
    }
    const NameTable table(read_.document, *object);
    std::vector<std::string_view> names;
    std::vector<std::size_t> objects;
    std::vector<std::vector<NamedPackage>> lists;
    std::vector<std::vector<NamedPackage>*> pointers;
    lists.reserve(table.entries().size());
    for (const NameTable::Entry& entry : table.entries()) {
      names.push_back(entry.name);
      objects.push_back(entry.key + 1);
      pointers.push_back(&lists.emplace_back(listPackages(read_, entry.key + 1, Side::kFiles)));
    }
    markEqualKeys(read_, names, objects, pointers);
    std::vector<std::size_t> order(names.size());
    for (std::size_t index = 0; index < order.size(); ++index) {
      order[index] = index;
    }
    std::sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
      return read_.document.bytesOf(table.entries()[left].key) <
             read_.document.bytesOf(table.entries()[right].key);
    });
    for (const std::size_t index : order) {
      walkFilesOf(names, lists, index);
    }
  }

  // Components that are read with one name are neighbors in the lists.
  void walkFilesOf(const std::vector<std::string_view>& names,
                   const std::vector<std::vector<NamedPackage>>& lists, std::size_t index) {
    const std::string_view name = names[index];
    const auto first = static_cast<std::size_t>(std::lower_bound(names.begin(), names.end(), name) -
                                                names.begin());
    const bool isShared = first != index || (index + 1 < names.size() && names[index + 1] == name);
    Place place = placeOf(Side::kFiles, name);
    for (const NamedPackage& package : lists[index]) {
      place.verdicts.files = files_.verdictOn(package, {first, name}, {Use::kUsed});
      if (isShared && !package.isNameRepeated &&
          !namesWithFiles_[name].insert(package.name).second) {
        place.verdicts.files = {Use::kRepeatedComponent};
      }
      visitPackage(package, place);
    }
  }

  // Packages that no product can bring.
  void visitUnusedComponents() {
    for (std::size_t index = 0; index < isNamed_.size(); ++index) {
      for (const Side side : kSidesOfProducts) {
        if (!isNamed_[index][static_cast<std::size_t>(side)]) {
          Place place = placeOf(side, components_.all()[index].name);
          place.verdicts = verdictsOf(side, Use::kUnusedComponent);
          for (const NamedPackage& package : packagesOf(index, side)) {
            visitPackage(package, place);
          }
        }
      }
    }
  }

  void visitPackage(const NamedPackage& package, Place& place) const {
    read_.setPackage(package, place);
    visit_(place);
  }

  const std::vector<NamedPackage>& packagesOf(std::size_t component, Side side) const {
    return components_.all()[component].packages[static_cast<std::size_t>(side)];
  }

  const ReadDocument& read_;
  const DescribedComponents& components_;
  const ProductLookUp& products_;
  const VisitPlace& visit_;
  std::vector<std::array<bool, 2>> isNamed_;                         // by component and side
  std::array<std::map<std::u16string, FirstWins::Named>, 2> codes_;  // the products that have them
  std::array<std::map<std::string_view, FirstWins>, 2> namesakes_;
  FirstWins sizes_;
  FirstWins files_;
  std::map<std::string_view, std::set<std::string_view>> namesWithFiles_;
};

}  // namespace

void forEachPlaceOfModel(const ReadDocument& read, const DescribedComponents& components,
                         const ProductLookUp& products, const VisitPlace& visit) {
  ModelPlaces(read, components, products, visit).walk();
}

}  // namespace update_metadata_tool::places
