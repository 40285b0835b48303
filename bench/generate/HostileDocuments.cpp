#include <algorithm>
#include <cmath>

#include "generate/Family.h"
#include "generate/Repetition.h"

namespace bench::generate {
namespace {

// -------------------------------------------------------------------------------------------------
// Documents

std::string document(const std::string& components, const std::string& products,
                     const std::string& files) {
  return "{\"metadata\":{\"arch\":\"\",\"target\":null,\"base\":null},\"components\":{" +
         components + "},\"products\":{" + products + "},\"componentsWithFilesDeleted\":{" + files +
         "}}";
}

std::string component(const std::string& name, std::size_t packages) {
  return "\"" + name + "\":{\"delete\":{},\"extract\":{" +
         joined(packages,
                [](std::size_t i) {
                  return "\"" + nineDigits(i) + "\":{\"size\":1,\"uncompressedBytes\":2}";
                }) +
         "}}";
}

template <class Name>
std::string product(const std::string& name, std::size_t components, const Name& componentName) {
  return "\"" + name + "\":{\"delete\":[],\"extract\":[" +
         joined(components, [&](std::size_t i) { return "\"" + componentName(i) + "\""; }) + "]}";
}

std::string componentNumber(std::size_t number) {
  return "c" + std::to_string(number);
}

std::string productNumber(std::size_t number) {
  return "p" + nineDigits(number);
}

std::string manyFiles(std::size_t size) {
  return document("", "", "\"c\":{\"p\":{\"size\":1,\"files\":[" + joined(size, [](std::size_t i) {
                            return "\"folder/" + nineDigits(shuffled(i)) + "\"";
                          }) + "]}}");
}

std::string oneComponentManyTimes(std::size_t size) {
  constexpr std::size_t kPackages = 20;
  return document(component("c", kPackages),
                  product("p", size, [](std::size_t) { return std::string("c"); }), "");
}

std::string manyPackages(std::size_t size) {
  return document(component("c", size), product("p", 1, componentNumber), "");
}

std::string manyComponents(std::size_t size) {
  return document(joined(size, [](std::size_t i) { return component(componentNumber(i), 2); }),
                  product("p", size, componentNumber), "");
}

std::string manyProducts(std::size_t size) {
  constexpr std::size_t kPackages = 100;
  return document(component("c", kPackages),
                  joined(size,
                         [](std::size_t i) {
                           return product(productNumber(i), 1,
                                          [](std::size_t) { return std::string("c"); });
                         }),
                  "");
}

// Equal numbers of products, components per product and packages per component.
std::string productsTimesComponentsTimesPackages(std::size_t size) {
  const auto side = static_cast<std::size_t>(std::lround(std::cbrt(static_cast<double>(size))));
  return document(
      joined(side, [&](std::size_t i) { return component(componentNumber(i), side); }),
      joined(side, [&](std::size_t i) { return product(productNumber(i), side, componentNumber); }),
      "");
}

// A component name of n bytes in front of each of 2n packages.
std::string longComponentName(std::size_t size) {
  const auto bytes =
      static_cast<std::size_t>(std::lround(std::sqrt(static_cast<double>(size) / 2)));
  const auto name = [=](std::size_t) { return std::string(bytes, 'c'); };
  return document(component(name(0), 2 * bytes), product("p", 1, name), "");
}

Family documentFamily(std::string_view name, std::string_view description,
                      std::string (*make)(std::size_t), std::size_t sizeToStart,
                      std::size_t megabyte) {
  return {name, description, make, sizeToStart, megabyte, {}, false, FamilyKind::document};
}

}  // namespace

const std::vector<Family>& hostileDocuments() {
  static const std::vector<Family> all = {
      documentFamily("files", "files in one package", manyFiles, 1000, 54'000),
      documentFamily("one-component", "one component named many times", oneComponentManyTimes, 1000,
                     250'000),
      documentFamily("packages", "packages of one component", manyPackages, 500, 21'000),
      documentFamily("components", "components of one product", manyComponents, 200, 7'300),
      documentFamily("products", "products that share one component", manyProducts, 160, 24'000),
      documentFamily("product", "as many products as components as packages",
                     productsTimesComponentsTimesPackages, 64'000, 3'700'000),
      documentFamily("component-name", "packages of a component with a long name",
                     longComponentName, 200'000, 200'000'000),
  };
  return all;
}

std::vector<Family> allFamilies() {
  std::vector<Family> all = hostileTexts();
  for (const auto* others : {&hostileDocuments(), &hostileCatalogues()}) {
    all.insert(all.end(), others->begin(), others->end());
  }
  return all;
}

}  // namespace bench::generate
