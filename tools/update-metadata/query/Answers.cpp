#include "query/Answers.h"

#include <algorithm>
#include <utility>

#include "input/DocumentLimits.h"
#include "input/DocumentText.h"
#include "input/TextParser.h"
#include "install/update_metadata_parser/Limits.h"
#include "output/Digest.h"
#include "output/Text.h"
#include "summary/Contents.h"
#include "summary/GatherModel.h"
#include "summary/NearProducts.h"

namespace update_metadata_tool::query {
namespace {

using install::update_metadata_parser::LimitedHandler;
using install::update_metadata_parser::Limits;
using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataHandler;
using summary::Product;

/// Uses each product's name as its base code and never opens a catalogue.
class NamesAsBaseCodes : public LimitedHandler {
 public:
  using LimitedHandler::LimitedHandler;

  std::u16string getProductName(const std::u16string& productBaseCode,
                                const std::u16string& /*productDataLocation*/) override {
    return productBaseCode;
  }

  std::u16string getProductBaseCode(const std::u16string& productName,
                                    const std::u16string& /*productDataLocation*/) override {
    return productName;
  }
};

bool hasName(const summary::Contents& contents, const std::u16string& name) {
  return std::any_of(contents.products.begin(), contents.products.end(),
                     [&name](const Product& product) { return product.name == name; });
}

}  // namespace

LoadedUpdate loadUpdate(const Question& question) {
  const std::string file = output::toUtf8(question.file);
  const Limits limits = input::limitsOf(file, question.limits);
  auto handler = question.productData ? std::make_shared<LimitedHandler>(limits)
                                      : std::make_shared<NamesAsBaseCodes>(limits);
  std::string text = input::readDocument(file, limits.bytes);
  std::string sha256 = question.needsDigest ? output::sha256(text) : std::string();
  input::TextParser parser(question.file, std::move(text), handler);
  return {std::move(sha256), parser.parseUpdateMetaDataJson(), std::move(handler)};
}

Answers gatherAnswers(const UpdateMetaData& update, const Question& question) {
  const std::u16string location = question.productData.value_or(std::u16string());
  Answers answers;
  answers.question = question;
  answers.base = {update.getBaseReleaseFamily(), update.getBaseReleaseVersion()};
  answers.target = {update.getTargetReleaseFamily(), update.getTargetReleaseVersion()};
  answers.targetUpdateLevel = update.getTargetUpdateLevelForQorv();
  if (question.baseCode) {
    answers.packagesToDelete = update.getComponentsToDelete(*question.baseCode, location);
    answers.packagesToExtract = update.getComponentsToExtract(*question.baseCode, location);
  } else {
    answers.packagesToDelete = update.getComponentsToDelete(location);
    answers.packagesToExtract = update.getComponentsToExtract(location);
  }
  answers.sizesToExtract = update.getUpdateSizeForComponentsToExtract();
  answers.filesToDelete = update.getComponentsWithFilesToDelete();
  return answers;
}

std::string noteOnBaseCode(const LoadedUpdate& loaded, const Answers& answers) {
  const Question& question = answers.question;
  const auto isEmpty = [](const auto& packages) { return packages.empty(); };
  if (!question.baseCode || !std::visit(isEmpty, answers.packagesToDelete) ||
      !std::visit(isEmpty, answers.packagesToExtract)) {
    return "";
  }
  const std::u16string location = question.productData.value_or(std::u16string());
  UpdateMetaDataHandler& handler = *loaded.handler;
  summary::Contents contents;
  summary::gatherModel(handler.getProductUpdateMetaDataModel(), contents, terminal::noProgress());
  const auto findName = [&](const std::u16string& code) {
    return handler.getProductName(code, location);
  };
  if (hasName(contents, findName(*question.baseCode))) {
    return "";
  }
  summary::gatherBaseCodes(handler, location, contents);
  const std::string nearest = summary::listNearProducts(contents, findName, *question.baseCode);
  return '\'' + output::toVisible(question.file) + "' has no product with the base code '" +
         summary::shorten(*question.baseCode) + '\'' +
         (nearest.empty() ? "" : "; the nearest in the document: " + nearest);
}

}  // namespace update_metadata_tool::query
