#include "places/LoadedDocument.h"

#include <cstdint>
#include <memory>
#include <utility>

#include "diagnosis/FindingList.h"
#include "diagnosis/TextChecks.h"
#include "input/DocumentText.h"
#include "input/TextParser.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "output/Digest.h"
#include "output/Text.h"
#include "places/ModelPlaces.h"
#include "places/NamedPackages.h"
#include "places/UnreadPlaces.h"

namespace update_metadata_tool::places {
namespace {

namespace diagnosis = install::update_metadata_parser::diagnosis;
using diagnosis::source::SourceKind;
using install::datamodels::product_update::PkgDataWithFilesToDelete;
using install::update_metadata_parser::UpdateMetaDataHandler;

/// Keeps the releases and the architecture of a document, and nothing of its packages.
class HeadHandler : public UpdateMetaDataHandler {
 public:
  void setMetaDataArch(const std::u16string& arch) const override { arch_ = arch; }
  void setProductDeltaData(const std::u16string& /*name*/,
                           const std::vector<std::u16string>& /*compsToDelete*/,
                           const std::vector<std::u16string>& /*compsToExtract*/,
                           const PkgsToDelete& /*pkgsToDelete*/,
                           const PkgsToExtract& /*pkgsToExtract*/) const override {}
  PkgDataWithFilesToDelete createPkgDataWithFilesToDelete(
      const std::u16string& /*name*/, std::int64_t /*size*/,
      const std::vector<std::u16string>& /*files*/) const override {
    return {};
  }
  void setComponentDataWithFilesToDelete(
      const std::u16string& /*name*/,
      const std::vector<PkgDataWithFilesToDelete>& /*pkgs*/) const override {}

  const std::u16string& arch() const { return arch_; }

 private:
  mutable std::u16string arch_;  // the setters are const
};

DocumentHead loadHead(const std::string& file, const std::string& text) {
  const auto handler = std::make_shared<HeadHandler>();
  input::TextParser(output::toUtf16(file), text, handler).parseUpdateMetaDataJson();
  return {file,
          {handler->getBaseReleaseFamily(), handler->getBaseReleaseVersion()},
          {handler->getTargetReleaseFamily(), handler->getTargetReleaseVersion()},
          handler->getTargetUpdateLevelForQorv(),
          handler->arch(),
          output::sha256(text)};
}

std::string readText(const std::string& file, const input::GivenLimits& limits,
                     terminal::ProgressLine& progress) {
  progress.begin("reading the document");
  return input::readDocument(file, input::limitsOf(file, limits).bytes, progress);
}

}  // namespace

LoadedDocument::LoadedDocument(const std::string& file, const input::GivenLimits& limits,
                               terminal::ProgressLine& progress)
    : LoadedDocument(file, readText(file, limits, progress)) {}

LoadedDocument::LoadedDocument(const std::string& file, std::string text)
    : text_(std::move(text)), tree_(text_), document_(tree_), lines_(text_) {
  head_ = loadHead(file, text_);
  diagnosis::FindingList unused;
  diagnosis::checkRepeatedKeys(document_, unused);
}

void LoadedDocument::forEachPlace(const ProductLookUp& products, const VisitPlace& visit) const {
  const ReadDocument read = {document_, lines_};
  const DescribedComponents components(read);
  forEachPlaceOfModel(read, components, products, visit);
  forEachUnreadPlace(read, components, products, visit);
}

std::vector<std::string_view> LoadedDocument::productNames() const {
  std::vector<std::string_view> names;
  if (const auto section = ReadDocument{document_, lines_}.section("products")) {
    document_.forEachMember(*section,
                            [&](std::size_t key) { names.push_back(document_.nameOf(key)); });
  }
  return names;
}

std::vector<std::string_view> LoadedDocument::filesOf(const Place& place) const {
  std::vector<std::string_view> files;
  if (place.files) {
    document_.forEachElement(*place.files, [&](std::size_t element) {
      if (document_.isA(SourceKind::kString, element)) {
        files.push_back(document_.nameOf(element));
      }
    });
  }
  return files;
}

}  // namespace update_metadata_tool::places
