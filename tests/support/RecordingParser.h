#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "support/RecordingHandler.h"

namespace test_support {

/// A parser that makes recording handlers and exposes its fields.
class RecordingParser : public install::update_metadata_parser::UpdateMetaDataJsonParser {
 public:
  using UpdateMetaDataJsonParser::componentPkgsToDelete;
  using UpdateMetaDataJsonParser::componentPkgsToExtract;
  using UpdateMetaDataJsonParser::handler;
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;

  std::shared_ptr<install::update_metadata_parser::UpdateMetaDataHandler> getUpdateMetaDataHandler()
      const override {
    return std::make_shared<RecordingHandler>();
  }

  /// The handler of the last load. \pre there was one
  RecordingHandler& recorder() const { return dynamic_cast<RecordingHandler&>(*handler); }

  /// Returns the calls that the handler of the last load has received, and clears the record.
  std::vector<std::string> takeCalls() const { return recorder().takeCalls(); }
};

/// A recording parser whose document, "document.json", is a text in memory.
class TextParser : public RecordingParser {
 public:
  explicit TextParser(std::string documentText)
      : RecordingParser(u"document.json"), text(std::move(documentText)) {}

  std::string readFile(const std::u16string&) override { return text; }

  std::string text;
};

}  // namespace test_support
