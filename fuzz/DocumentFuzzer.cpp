// Any text as a document: loaded, given all six queries through copies of the facade, and
// destroyed. The answers agree with a plain walk over the model, failures are of the known kinds,
// and the state that a failed load leaves can still be queried.

#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>

#include "Fuzzer.h"
#include "Require.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

namespace {

using fuzz::require;
using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;
using install::datamodels::product_update::ProductDeltaData;
using install::datamodels::product_update::ProductUpdateMetaData;
using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdateMetaDataJsonParser;

using Keys = std::set<std::u16string>;
using KeysByCode = std::map<std::u16string, Keys>;
using Sizes = std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>;
using Files = std::map<std::u16string, std::pair<Keys, std::int64_t>>;

// Each further base code makes the fuzzer slower.
constexpr std::size_t kMostCodes = 4;

const std::u16string kSharedCode = u"=";

// Names that begin with "=" and the empty name share one base code; every other name has its own.
std::u16string codeOf(const std::u16string& name) {
  return name.empty() || name.front() == u'=' ? kSharedCode : u"c" + name;
}

std::u16string nameOf(const std::u16string& code) {
  return code == kSharedCode ? u"=" : code.substr(1);
}

class Handler : public UpdateMetaDataHandler {
 public:
  std::u16string getProductName(const std::u16string& code, const std::u16string&) override {
    return nameOf(code);
  }
  std::u16string getProductBaseCode(const std::u16string& name, const std::u16string&) override {
    return codeOf(name);
  }
};

class Parser : public UpdateMetaDataJsonParser {
 public:
  explicit Parser(std::string text)
      : UpdateMetaDataJsonParser(u"document.json"), text_(std::move(text)) {}

  std::string readFile(const std::u16string&) override { return std::move(text_); }
  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    return std::make_shared<Handler>();
  }

  ProductUpdateMetaData root() const { return handler->getProductUpdateMetaDataModel(); }

 private:
  std::string text_;
};

// One side of the products: to delete or to extract.
struct Side {
  bool extracts;

  const auto& components(const ProductDeltaData& product) const {
    return extracts ? product->getCompsToExtract() : product->getCompsToDelete();
  }
  const auto& packages(const ComponentDeltaData& component) const {
    return extracts ? component->getPkgsToExtract() : component->getPkgsToDelete();
  }
  KeysByCode answer(const UpdateMetaData& facade) const {
    return extracts ? facade.getComponentsToExtract(u"there")
                    : facade.getComponentsToDelete(u"there");
  }
  Keys answer(const UpdateMetaData& facade, const std::u16string& code) const {
    return extracts ? facade.getComponentsToExtract(code, u"there")
                    : facade.getComponentsToDelete(code, u"there");
  }
};

// Calls `visit` with every package of one product and its key.
template <class Visit>
void forEachPackage(const ProductDeltaData& product, Side side, const Visit& visit) {
  const auto& components = side.components(product);
  for (std::size_t i = 0; i < components.size(); ++i) {
    const ComponentDeltaData component = components[i];
    const auto& packages = side.packages(component);
    for (std::size_t k = 0; k < packages.size(); ++k) {
      const PkgDeltaData pkg = packages[k];
      visit(component->getName() + u'_' + pkg->getName(), pkg);
    }
  }
}

void checkSide(const ProductUpdateMetaData& root, const UpdateMetaData& facade, Side side) {
  KeysByCode expected;
  std::map<std::u16string, Keys> expectedByName;
  const auto& products = root->getProductsDeltaData();
  for (std::size_t i = 0; i < products.size(); ++i) {
    const ProductDeltaData product = products[i];
    Keys keys;
    forEachPackage(product, side,
                   [&](const std::u16string& key, const auto&) { keys.insert(key); });
    Keys& ofName = expectedByName[product->getName()];
    ofName.insert(keys.begin(), keys.end());
    if (!keys.empty()) {
      expected.emplace(codeOf(product->getName()), std::move(keys));
    }
  }
  require(side.answer(facade) == expected, "wrong answer for all products");
  std::size_t queried = 0;
  for (const auto& [name, keys] : expectedByName) {
    if (codeOf(name) != kSharedCode && queried++ < kMostCodes) {
      require(side.answer(facade, codeOf(name)) == keys, "wrong answer for one product");
    }
  }
  require(side.answer(facade, kSharedCode) == expectedByName[u"="],
          "wrong answer for a shared base code");
}

void checkSizes(const ProductUpdateMetaData& root, const UpdateMetaData& facade) {
  Sizes expected;
  const auto& products = root->getProductsDeltaData();
  for (std::size_t i = 0; i < products.size(); ++i) {
    forEachPackage(products[i], Side{true}, [&](const std::u16string& key, const auto& pkg) {
      expected.emplace(key, std::pair(pkg->getSize(), pkg->getUncompressedBytes()));
    });
  }
  require(facade.getUpdateSizeForComponentsToExtract() == expected, "other sizes");
}

void checkFiles(const ProductUpdateMetaData& root, const UpdateMetaData& facade) {
  Files expected;
  const auto& components = root->getCompsWithFilesToDelete();
  for (std::size_t i = 0; i < components.size(); ++i) {
    const auto& packages = components[i]->getPkgsWithFilesToDelete();
    for (std::size_t k = 0; k < packages.size(); ++k) {
      Keys files;
      for (const std::u16string file : packages[k]->getFilesToDelete()) {
        files.insert(file);
      }
      expected.emplace(components[i]->getName() + u'_' + packages[k]->getName(),
                       std::pair(std::move(files), packages[k]->getSize()));
    }
  }
  require(facade.getComponentsWithFilesToDelete() == expected, "other files");
}

void checkAnswers(const ProductUpdateMetaData& root, const UpdateMetaData& facade) {
  checkSide(root, facade, Side{false});
  checkSide(root, facade, Side{true});
  checkSizes(root, facade);
  checkFiles(root, facade);
  const int level = facade.getTargetUpdateLevelForQorv();
  require(level >= -128 && level <= 127, "a level beyond a signed byte");
  facade.getBaseReleaseFamily();
  facade.getBaseReleaseVersion();
  facade.getTargetReleaseFamily();
  facade.getTargetReleaseVersion();
}

bool isKnownFailure(std::string_view message) {
  constexpr std::string_view kStarts[] = {"Error while parsing document.json",
                                          "Invalid data provided for '", "invalid conversion: "};
  for (const std::string_view start : kStarts) {
    if (message.substr(0, start.size()) == start) {
      return true;
    }
  }
  return false;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto parser = std::make_unique<Parser>(std::string(data, data + size));
  try {
    std::shared_ptr<UpdateMetaData> facade = parser->parseUpdateMetaDataJson();
    UpdateMetaData copy = *facade;
    facade.reset();
    const UpdateMetaData another = copy;
    const ProductUpdateMetaData root = parser->root();
    parser.reset();
    checkAnswers(root, copy);
    copy = another;
    checkAnswers(root, copy);
    return 0;
  } catch (const std::out_of_range& failure) {
    require(typeid(failure) == typeid(std::out_of_range) &&
                failure.what() == std::string_view("map::at"),
            "an exception of another kind");
  } catch (const std::runtime_error& failure) {
    require(typeid(failure) == typeid(std::runtime_error) && isKnownFailure(failure.what()),
            "an exception of another kind");
  }
  checkAnswers(parser->root(), *parser->setupUpdateMetaData());
  return 0;
}
