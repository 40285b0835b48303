// Uses an installed library as an application does that derives classes and reads the model.
// Includes every kind of installed header and links every kind of symbol. Exits with status 0 if
// every answer is right.

#include <cstdint>
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "foundation/core/except.h"
#include "foundation/json/Value.h"
#include "install/product_data_provider/ProductDataProvider.h"
#include "install/update_metadata_parser/Diagnosis.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "install/update_metadata_parser/Version.h"
#include "mf/zero/elements/Messages.h"

namespace {

using foundation::json::Array;
using foundation::json::Object;
using foundation::json::Value;
using install::product_data_provider::ProductDataProvider;
using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdateMetaDataJsonParser;
using install::update_metadata_parser::UpdatePkgData;

constexpr const char* kDocument = R"({
  "metadata": {
    "arch": "x86_64",
    "base": null,
    "target": {
      "zelvan_version": "7.2", "date": "2024-09-16", "version": "7.2.0", "prerelease": false,
      "release": "Fernlight 7", "checksum": "", "description": "", "update": 300
    }
  },
  "components": {
    "core": {
      "delete": {"legacy": {"size": 1}},
      "extract": {"engine": {"size": 2, "uncompressedBytes": 3}}
    }
  },
  "products": {"Editor": {"delete": ["core"], "extract": ["core"]}},
  "componentsWithFilesDeleted": {"core": {"manual": {"size": 4, "files": ["old.html"]}}},
  "ignored": {"qztype": "int64", "qzdata": [9007199254740993]}
})";

class FixedCatalogue : public ProductDataProvider {
 public:
  explicit FixedCatalogue(std::u16string location) : ProductDataProvider(std::move(location)) {}

  std::u16string getProductBaseCode(const std::u16string& productName) const override {
    const std::u16string known = ProductDataProvider::getProductBaseCode(productName);
    return known.empty() ? u"FE" : known;
  }
};

class CountingHandler : public UpdateMetaDataHandler {
 public:
  void setProductDeltaData(const std::u16string& name,
                           const std::vector<std::u16string>& compsToDelete,
                           const std::vector<std::u16string>& compsToExtract,
                           const PkgsToDelete& pkgsToDelete,
                           const PkgsToExtract& pkgsToExtract) const override {
    ++products_;
    UpdateMetaDataHandler::setProductDeltaData(name, compsToDelete, compsToExtract, pkgsToDelete,
                                               pkgsToExtract);
  }

  void initializeProductDataProvider(const std::u16string& productDataLocation) override {
    if (!productDataProvider) {
      productDataProvider = std::make_shared<FixedCatalogue>(productDataLocation);
    }
  }

  int products() const { return products_; }

 private:
  mutable int products_ = 0;
};

class MemoryParser : public UpdateMetaDataJsonParser {
 public:
  explicit MemoryParser(std::string text)
      : UpdateMetaDataJsonParser(u"in memory"), text_(std::move(text)) {}

  std::string readFile(const std::u16string& /*path*/) override { return text_; }

  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    return std::make_shared<CountingHandler>();
  }

  std::shared_ptr<CountingHandler> countingHandler() const {
    return std::dynamic_pointer_cast<CountingHandler>(handler);
  }

 private:
  std::string text_;
};

int answers = 0;
int failures = 0;

void expect(bool holds, const char* what) {
  ++answers;
  if (!holds) {
    ++failures;
    std::cout << "FAILED: " << what << '\n';
  }
}

/// Returns the text of the `Exception` that `action` throws; empty if it throws nothing.
template <class Exception, class Action>
std::string thrownText(Action action) {
  try {
    action();
  } catch (const Exception& failure) {
    return failure.what();
  }
  return "";
}

void checkAnswers(const UpdateMetaData& update) {
  using Keys = std::set<std::u16string>;
  using KeysByCode = std::map<std::u16string, Keys>;
  expect(update.getTargetReleaseFamily() == u"Fernlight 7", "family of the target");
  expect(update.getTargetReleaseVersion() == u"7.2.0", "version of the target");
  expect(update.getTargetUpdateLevelForQorv() == 44, "level of the target, a signed byte");
  expect(update.getBaseReleaseFamily().empty() && update.getBaseReleaseVersion().empty(),
         "no base release");
  const std::u16string nowhere = u"/nonexistent/product-data";
  expect(update.getComponentsToDelete(nowhere) == KeysByCode{{u"FE", {u"core_legacy"}}},
         "packages to delete by base code");
  expect(update.getComponentsToExtract(nowhere) == KeysByCode{{u"FE", {u"core_engine"}}},
         "packages to extract by base code");
  expect(update.getComponentsToExtract(u"FE", nowhere).empty(),
         "a base code without a name in the catalogue has no packages");
  expect(
      update.getUpdateSizeForComponentsToExtract() ==
          std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>{{u"core_engine", {2, 3}}},
      "sizes of the packages to extract");
  expect(update.getComponentsWithFilesToDelete() ==
             std::map<std::u16string, std::pair<Keys, std::int64_t>>{
                 {u"core_manual", {{u"old.html"}, 4}}},
         "files to delete");
}

void checkModel(const UpdateMetaDataHandler& handler) {
  const auto root = handler.getProductUpdateMetaDataModel();
  const auto& products = root->getProductsDeltaData();
  expect(products.size() == 1 && products[0]->getName() == u"Editor", "products of the model");

  const auto component = products[0]->getCompsToExtract()[0];
  const auto package = handler.initializePkgDataForExtract(UpdatePkgData{u"fonts", 5, 6});
  component->getPkgsToExtractMutable().append(package);
  const auto& packages = component->getPkgsToExtract();
  expect(packages.size() == 2 && packages[1]->getUncompressedBytes() == 6, "an appended package");

  const UpdateMetaDataHandler other;
  const auto foreign = other.initializePkgDataForDelete(u"foreign", 7);
  using IncompatibleModels = foundation::core::except::Exception<mf::zero::IncompatibleModels>;
  const auto appendForeign = [&] { component->getPkgsToExtractMutable().append(foreign); };
  expect(!thrownText<IncompatibleModels>(appendForeign).empty() &&
             !thrownText<foundation::core::except::IMsgIDException>(appendForeign).empty() &&
             !thrownText<std::exception>(appendForeign).empty(),
         "a package of another model is rejected with the framework's exception");
}

void checkValues(MemoryParser& parser) {
  const Object document = parser.getJsonObjFromFile(u"in memory");
  const Value& typed = document.at("ignored")["qzdata"];
  expect(typed == Value(Array{std::int64_t{9007199254740993}}), "typed integers are exact");
  expect(document.find("absent") == document.end(), "an absent member");
  expect(thrownText<std::out_of_range>([&] { document.at("absent"); }) == "map::at",
         "the text for an absent member");
  const Value made(Object{{"key", Value("text")}, {"key", Value(2.0)}});
  expect(made["key"].as<std::string>() == "text", "the first of two equal keys");
  expect(thrownText<std::runtime_error>([&] { made["key"].as<double>(); }) ==
             "invalid conversion: string to double",
         "the text for a value of another kind");
}

void checkFailures() {
  MemoryParser malformed("{\"metadata\": ");
  expect(thrownText<std::runtime_error>([&] { malformed.parseUpdateMetaDataJson(); }) ==
             "Error while parsing in memory",
         "the text for a malformed document");
  UpdateMetaDataJsonParser missing(u"/nonexistent/update.json");
  expect(thrownText<std::runtime_error>([&] { missing.parseUpdateMetaDataJson(); }) ==
             "Update MetaData Json file does not exist ",
         "the text for a missing file");
}

void checkDiagnosis() {
  using namespace install::update_metadata_parser;
  expect(diagnose(kDocument).loads(), "the document loads");
  DiagnosisOptions options;
  options.path = u"in memory";
  const Diagnosis diagnosis = diagnose("{\"metadata\": ", options);
  expect(diagnosis.exception && diagnosis.exception->type == "std::runtime_error" &&
             diagnosis.exception->text == "Error while parsing in memory",
         "the exception for a malformed document");
  expect(diagnosis.findings.size() == 1 && diagnosis.findings[0].rule == "malformed-text" &&
             diagnosis.findings[0].severity == Severity::kError,
         "the reason for it");
}

void checkVersion() {
  const std::string headers = std::to_string(UPDATE_METADATA_PARSER_VERSION_MAJOR) + '.' +
                              std::to_string(UPDATE_METADATA_PARSER_VERSION_MINOR) + '.' +
                              std::to_string(UPDATE_METADATA_PARSER_VERSION_PATCH);
  expect(install::update_metadata_parser::version() == headers,
         "the library and its headers have the same version");
}

}  // namespace

int main() {
  try {
    MemoryParser parser(kDocument);
    const std::shared_ptr<UpdateMetaData> update = parser.parseUpdateMetaDataJson();
    checkAnswers(*update);
    expect(parser.countingHandler() && parser.countingHandler()->products() == 1,
           "the derived handler was filled");
    checkModel(*parser.countingHandler());
    checkValues(parser);
    checkFailures();
    checkDiagnosis();
    checkVersion();
  } catch (const std::exception& failure) {
    std::cout << "FAILED: unexpected exception: " << failure.what() << '\n';
    return 1;
  }
  std::cout << "consumer of version " << install::update_metadata_parser::version() << ": "
            << answers - failures << " of " << answers << " answers are right\n";
  return failures == 0 ? 0 : 1;
}
