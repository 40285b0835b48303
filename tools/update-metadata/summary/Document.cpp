#include "summary/Document.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "command/Advice.h"
#include "input/DocumentLimits.h"
#include "input/DocumentText.h"
#include "input/TextParser.h"
#include "output/Digest.h"
#include "output/ReadableSize.h"
#include "output/Text.h"
#include "summary/GatherModel.h"
#include "summary/SummaryHandler.h"

namespace update_metadata_tool::summary {
namespace {

using install::update_metadata_parser::Limits;
using terminal::ProgressLine;

// Parsing more takes noticeable time, in which the library reports no progress.
constexpr std::size_t kLongText = std::size_t{32} << 20U;

}  // namespace

Document::Document(DocumentSource source, ProgressLine& progress)
    : source_(std::move(source)), progress_(progress) {
  const std::string file = output::toUtf8(source_.file);
  const Limits limits = input::limitsOf(file, source_.limits);
  handler_ = std::make_shared<SummaryHandler>(limits, progress);
  progress.begin("reading the document");
  std::string text = source_.text ? *std::exchange(source_.text, std::nullopt)
                                  : input::readDocument(file, limits.bytes, progress);
  if (source_.needsDigest) {
    sha256_ = output::sha256(text);
  }
  if (text.size() > kLongText) {
    progress.beginSilent("parsing " + output::toShortSize(static_cast<std::int64_t>(text.size())));
  }
  input::TextParser(source_.file, std::move(text), handler_).parseUpdateMetaDataJson();
}

Contents Document::gatherContents() const {
  Contents contents;
  contents.sha256 = sha256_;
  contents.base = {handler_->getBaseReleaseFamily(), handler_->getBaseReleaseVersion()};
  contents.target = {handler_->getTargetReleaseFamily(), handler_->getTargetReleaseVersion()};
  contents.targetUpdateLevel = handler_->getTargetUpdateLevelForQorv();
  contents.architecture = handler_->architecture();
  progress_.begin("gathering the contents");
  gatherModel(handler_->getProductUpdateMetaDataModel(), contents, progress_);
  if (source_.productData) {
    gatherBaseCodes(*handler_, *source_.productData, contents);
  }
  return contents;
}

std::u16string Document::findProductName(const std::u16string& baseCode) const {
  return handler_->getProductName(baseCode, source_.productData.value());
}

bool queryDocument(const DocumentSource& source, const std::function<void(const Document&)>& query,
                   std::ostream& err, ProgressLine& progress) {
  std::optional<Document> document;
  return command::loadAndQuery(
      source.file, source.productData, [&] { document.emplace(source, progress); },
      [&] { query(*document); }, err, progress);
}

std::optional<Contents> readContents(const DocumentSource& source, std::ostream& err,
                                     ProgressLine& progress) {
  std::optional<Contents> contents;
  queryDocument(
      source, [&](const Document& document) { contents = document.gatherContents(); }, err,
      progress);
  return contents;
}

}  // namespace update_metadata_tool::summary
