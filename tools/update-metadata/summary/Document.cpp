#include "summary/Document.h"

#include <exception>
#include <utility>

#include "Advice.h"
#include "DocumentText.h"
#include "Text.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "summary/GatherModel.h"
#include "summary/SummaryHandler.h"

namespace update_metadata_tool {
namespace {

using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdateMetaDataJsonParser;

/// Has the document loaded into a handler that it is told, from a text if it is told one.
class SummaryParser : public UpdateMetaDataJsonParser {
 public:
  SummaryParser(const std::u16string& file, std::optional<std::string> text,
                std::shared_ptr<SummaryHandler> handlerToFill)
      : UpdateMetaDataJsonParser(file),
        text_(std::move(text)),
        handlerToFill_(std::move(handlerToFill)) {}

  std::string readFile(const std::u16string& path) override {
    return text_ ? std::move(*text_) : readDocument(toUtf8(path));
  }

  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    return handlerToFill_;
  }

 private:
  std::optional<std::string> text_;
  std::shared_ptr<SummaryHandler> handlerToFill_;
};

}  // namespace

Document::Document(DocumentSource source)
    : source_(std::move(source)), handler_(std::make_shared<SummaryHandler>()) {
  SummaryParser(source_.file, std::exchange(source_.text, std::nullopt), handler_)
      .parseUpdateMetaDataJson();
}

Contents Document::gatherContents() const {
  Contents contents;
  contents.base = {handler_->getBaseReleaseFamily(), handler_->getBaseReleaseVersion()};
  contents.target = {handler_->getTargetReleaseFamily(), handler_->getTargetReleaseVersion()};
  contents.targetUpdateLevel = handler_->getTargetUpdateLevelForQorv();
  contents.architecture = handler_->architecture();
  gatherModel(handler_->getProductUpdateMetaDataModel(), contents);
  if (source_.productData) {
    for (Product& product : contents.products) {
      std::u16string baseCode = handler_->getProductBaseCode(product.name, *source_.productData);
      if (!baseCode.empty()) {
        product.baseCode = std::move(baseCode);
      }
    }
  }
  return contents;
}

std::u16string Document::findProductName(const std::u16string& baseCode) const {
  return handler_->getProductName(baseCode, source_.productData.value());
}

bool askDocument(const DocumentSource& source, const std::function<void(const Document&)>& ask,
                 std::ostream& err) {
  std::optional<Document> document;
  try {
    document.emplace(source);
  } catch (const std::exception& failure) {
    reportUnloaded(failure, source.file, err);
    return false;
  }
  try {
    ask(*document);
  } catch (const std::exception& failure) {
    reportUnanswered(failure, source.file, source.productData.value_or(std::u16string()), err);
    return false;
  }
  return true;
}

std::optional<Contents> readContents(const DocumentSource& source, std::ostream& err) {
  std::optional<Contents> contents;
  askDocument(
      source, [&](const Document& document) { contents = document.gatherContents(); }, err);
  return contents;
}

}  // namespace update_metadata_tool
