#include "places/LoadedDocument.h"

#include <memory>
#include <utility>

#include "diagnosis/TextChecks.h"
#include "input/DocumentText.h"
#include "input/TextParser.h"
#include "output/Digest.h"
#include "output/Text.h"
#include "places/ModelPlaces.h"
#include "places/NamedPackages.h"
#include "places/UnreadPlaces.h"
#include "summary/SummaryHandler.h"

namespace update_metadata_tool::places {
namespace {

namespace diagnosis = install::update_metadata_parser::diagnosis;
using diagnosis::source::SourceKind;

DocumentHead loadHead(const std::string& file, const std::string& text,
                      const input::GivenLimits& limits) {
  const auto handler = std::make_shared<summary::SummaryHandler>(input::limitsOf(file, limits),
                                                                 terminal::noProgress());
  input::TextParser(output::toUtf16(file), text, handler).parseUpdateMetaDataJson();
  return {file,
          {handler->getBaseReleaseFamily(), handler->getBaseReleaseVersion()},
          {handler->getTargetReleaseFamily(), handler->getTargetReleaseVersion()},
          handler->getTargetUpdateLevelForQorv(),
          handler->architecture(),
          output::sha256(text)};
}

}  // namespace

LoadedDocument::LoadedDocument(const std::string& file, const input::GivenLimits& limits,
                               terminal::ProgressLine& progress)
    : LoadedDocument(file, input::readDocument(file, input::limitsOf(file, limits).bytes, progress),
                     limits) {}

LoadedDocument::LoadedDocument(const std::string& file, std::string text,
                               const input::GivenLimits& limits)
    : text_(std::move(text)),
      head_(loadHead(file, text_, limits)),
      tree_(text_),
      document_(tree_),
      lines_(text_) {
  diagnosis::ignoreRepeatedKeys(document_);
}

void LoadedDocument::forEachPlace(const ProductLookUp& products, const VisitPlace& visit,
                                  std::optional<std::string_view> onlyKey) const {
  const ReadDocument read = {document_, lines_};
  const DescribedComponents components(read, onlyKey);
  forEachPlaceOfModel(read, components, products, visit);
  forEachUnreadPlace(read, components, products, visit);
}

std::set<std::string> LoadedDocument::shortNames(std::size_t bytes) const {
  std::set<std::string> names;
  const auto addKey = [&](std::string_view component, std::string_view package) {
    if (component.size() + 1 + package.size() <= bytes) {
      names.insert(std::string(component) + '_' + std::string(package));
    }
  };
  const ReadDocument read = {document_, lines_};
  const DescribedComponents components(read);
  for (const DescribedComponent& component : components.all()) {
    for (const std::vector<NamedPackage>& packages : component.packages) {
      for (const NamedPackage& package : packages) {
        addKey(component.name, package.name);
      }
    }
  }
  if (const auto section = read.section("componentsWithFilesDeleted")) {
    document_.forEachMember(*section, [&](std::size_t component) {
      document_.forEachMember(component + 1, [&](std::size_t package) {
        addKey(document_.nameOf(component), document_.nameOf(package));
        for (const std::string_view file :
             filesOf(read.member(package + 1, "files", SourceKind::kArray))) {
          if (file.size() <= bytes) {
            names.emplace(file);
          }
        }
      });
    });
  }
  return names;
}

std::vector<std::string_view> LoadedDocument::productNames() const {
  std::vector<std::string_view> names;
  if (const auto section = ReadDocument{document_, lines_}.section("products")) {
    document_.forEachMember(*section,
                            [&](std::size_t key) { names.push_back(document_.nameOf(key)); });
  }
  return names;
}

std::size_t LoadedDocument::unknownProducts(const ProductLookUp& products) const {
  const ReadDocument read = {document_, lines_};
  const auto namesComponents = [&](std::size_t product, Side side) {
    const auto list = read.member(product, nameOf(side), SourceKind::kArray);
    return list && tree_[*list].next != *list + 1;
  };
  std::size_t count = 0;
  bool isAnyKnown = false;
  if (const auto section = read.section("products")) {
    document_.forEachMember(*section, [&](std::size_t key) {
      if (!isAnyKnown &&
          (namesComponents(key + 1, Side::kDelete) || namesComponents(key + 1, Side::kExtract))) {
        isAnyKnown = products.isKnown(products.baseCodeOf(output::toUtf16(document_.nameOf(key))));
        ++count;
      }
    });
  }
  return isAnyKnown ? 0 : count;
}

std::vector<std::string_view> LoadedDocument::filesOf(std::optional<std::size_t> list) const {
  std::vector<std::string_view> files;
  if (list) {
    document_.forEachElement(*list, [&](std::size_t element) {
      if (document_.isA(SourceKind::kString, element)) {
        files.push_back(document_.nameOf(element));
      }
    });
  }
  return files;
}

std::optional<std::size_t> LoadedDocument::lineOfFile(std::optional<std::size_t> list,
                                                      std::string_view path) const {
  std::optional<std::size_t> found;
  if (list) {
    document_.forEachElement(*list, [&](std::size_t element) {
      if (!found && document_.isA(SourceKind::kString, element) &&
          document_.nameOf(element) == path) {
        found = ReadDocument{document_, lines_}.lineOf(element);
      }
    });
  }
  return found;
}

}  // namespace update_metadata_tool::places
