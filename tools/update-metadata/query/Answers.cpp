#include "query/Answers.h"

#include "DocumentText.h"
#include "Text.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

namespace update_metadata_tool {
namespace {

using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdateMetaDataJsonParser;

/// Lets a product's name stand for its base code; no catalogue is ever opened.
class NamesAsBaseCodes : public UpdateMetaDataHandler {
 public:
  std::u16string getProductName(const std::u16string& productBaseCode,
                                const std::u16string& /*productDataLocation*/) override {
    return productBaseCode;
  }

  std::u16string getProductBaseCode(const std::u16string& productName,
                                    const std::u16string& /*productDataLocation*/) override {
    return productName;
  }
};

/// Reads the document of a question.
class QuestionParser : public UpdateMetaDataJsonParser {
 public:
  explicit QuestionParser(const Question& question)
      : UpdateMetaDataJsonParser(question.file),
        hasProductData_(question.productData.has_value()) {}

  std::string readFile(const std::u16string& path) override { return readDocument(toUtf8(path)); }

  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    return hasProductData_ ? UpdateMetaDataJsonParser::getUpdateMetaDataHandler()
                           : std::make_shared<NamesAsBaseCodes>();
  }

 private:
  bool hasProductData_;
};

}  // namespace

std::shared_ptr<UpdateMetaData> loadUpdate(const Question& question) {
  return QuestionParser(question).parseUpdateMetaDataJson();
}

Answers gatherAnswers(const UpdateMetaData& update, const Question& question) {
  const std::u16string location = question.productData.value_or(std::u16string());
  Answers answers;
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

}  // namespace update_metadata_tool
