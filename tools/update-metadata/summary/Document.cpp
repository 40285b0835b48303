#include "summary/Document.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <utility>

#include "command/Advice.h"
#include "input/DocumentText.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "output/ReadableSize.h"
#include "output/Text.h"
#include "summary/GatherModel.h"
#include "summary/SummaryHandler.h"

namespace update_metadata_tool::summary {
namespace {

using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdateMetaDataJsonParser;
using terminal::ProgressLine;

// What takes the library a noticeable time to parse, in which it says nothing.
constexpr std::size_t kLongText = std::size_t{32} << 20U;

/// Has the document loaded into a handler that it is told, from a text if it is told one.
class SummaryParser : public UpdateMetaDataJsonParser {
 public:
  SummaryParser(const std::u16string& file, std::optional<std::string> text,
                std::shared_ptr<SummaryHandler> handlerToFill, ProgressLine& progress)
      : UpdateMetaDataJsonParser(file),
        text_(std::move(text)),
        handlerToFill_(std::move(handlerToFill)),
        progress_(progress) {}

  std::string readFile(const std::u16string& path) override {
    progress_.begin("reading the document");
    std::string text =
        text_ ? std::move(*text_) : input::readDocument(output::toUtf8(path), progress_);
    if (text.size() > kLongText) {
      progress_.beginSilent("parsing " +
                            output::toShortSize(static_cast<std::int64_t>(text.size())));
    }
    return text;
  }

  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    return handlerToFill_;
  }

 private:
  std::optional<std::string> text_;
  std::shared_ptr<SummaryHandler> handlerToFill_;
  ProgressLine& progress_;
};

}  // namespace

Document::Document(DocumentSource source, ProgressLine& progress)
    : source_(std::move(source)),
      progress_(progress),
      handler_(std::make_shared<SummaryHandler>(progress)) {
  SummaryParser(source_.file, std::exchange(source_.text, std::nullopt), handler_, progress)
      .parseUpdateMetaDataJson();
}

Contents Document::gatherContents() const {
  Contents contents;
  contents.base = {handler_->getBaseReleaseFamily(), handler_->getBaseReleaseVersion()};
  contents.target = {handler_->getTargetReleaseFamily(), handler_->getTargetReleaseVersion()};
  contents.targetUpdateLevel = handler_->getTargetUpdateLevelForQorv();
  contents.architecture = handler_->architecture();
  progress_.begin("gathering what the document says");
  gatherModel(handler_->getProductUpdateMetaDataModel(), contents, progress_);
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
                 std::ostream& err, ProgressLine& progress) {
  std::optional<Document> document;
  try {
    document.emplace(source, progress);
  } catch (const std::exception& failure) {
    progress.clear();
    command::reportUnloaded(failure, source.file, err);
    return false;
  }
  try {
    ask(*document);
  } catch (const std::exception& failure) {
    progress.clear();
    command::reportUnanswered(failure, source.file, source.productData.value_or(std::u16string()),
                              err);
    return false;
  }
  return true;
}

std::optional<Contents> readContents(const DocumentSource& source, std::ostream& err,
                                     ProgressLine& progress) {
  std::optional<Contents> contents;
  askDocument(
      source, [&](const Document& document) { contents = document.gatherContents(); }, err,
      progress);
  return contents;
}

}  // namespace update_metadata_tool::summary
