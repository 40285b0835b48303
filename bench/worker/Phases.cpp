#include "worker/Phases.h"

#include <memory>
#include <utility>

#include "answers/Answers.h"
#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "peers/IdentityParser.h"
#include "worker/StepList.h"

namespace bench::worker {

using foundation::json::Value;
using install::update_metadata_parser::UpdateMetaData;

// The steps of parseUpdateMetaDataJson(), in order, one at a time.
void printPhases(const std::string& path, std::ostream& out) {
  const std::u16string location = fl::i18n::to_ustring(path);
  auto parser = std::make_unique<peers::IdentityParser>(location);
  parser->setupUpdateMetaDataHandler();
  std::shared_ptr<UpdateMetaData> metaData = parser->setupUpdateMetaData();
  std::string text;
  Value document;
  answers::Answers answers;

  StepList phases(out);
  phases.add("read the file", [&] { text = parser->readFile(location); });
  phases.add("parse the text",
             [&] { document = foundation::json::parseJsonText(std::move(text)); });
  phases.add("components into tables", [&] {
    parser->parseMetaData(document["metadata"]);
    parser->parseComponentData(document["components"]);
  });
  phases.add("products into the model", [&] { parser->parseProductData(document["products"]); });
  phases.add("files into the model", [&] {
    parser->parseComponentsWithFilesDeleted(document["componentsWithFilesDeleted"]);
  });
  phases.add("destroy text and tree", [&] { document = Value(); });
  phases.add("destroy the tables", [&] { parser.reset(); });
  phases.add("query what to delete",
             [&] { answers.toDelete = metaData->getComponentsToDelete(u""); });
  phases.add("query what to extract",
             [&] { answers.toExtract = metaData->getComponentsToExtract(u""); });
  phases.add("query sizes",
             [&] { answers.sizes = metaData->getUpdateSizeForComponentsToExtract(); });
  phases.add("query files", [&] { answers.files = metaData->getComponentsWithFilesToDelete(); });
  phases.add("destroy the model", [&] { metaData.reset(); });
  phases.add("destroy the answers", [&] { answers = answers::Answers(); });
}

}  // namespace bench::worker
