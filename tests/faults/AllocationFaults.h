// What the tests of failing allocations share.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "support/ModelDump.h"

namespace install::update_metadata_parser {

inline const std::string kWell = "nothing";
inline const std::string kExhaustion = "std::bad_alloc: std::bad_alloc";
inline const std::string kUnopened = "std::runtime_error: Error opening Update MetaData Json File";

/// How many allocations have failed in this program.
inline std::size_t points = 0;

inline std::string dumpOf(const UpdateMetaDataHandler& handler) {
  return test_support::dump(handler.getProductUpdateMetaDataModel());
}

/// A handler whose catalogue can be closed.
class ReopeningHandler : public UpdateMetaDataHandler {
 public:
  void closeCatalogue() { productDataProvider.reset(); }
};

/// A parser that reports how far it has come.
class WatchedParser : public UpdateMetaDataJsonParser {
 public:
  enum class Stage { kSettingUp, kReading, kTaking };

  using UpdateMetaDataJsonParser::handler;
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;

  Stage stage() const { return stage_; }

  std::string readFile(const std::u16string& path) override {
    stage_ = Stage::kReading;
    std::string text = UpdateMetaDataJsonParser::readFile(path);
    stage_ = Stage::kTaking;
    return text;
  }

  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    return std::make_shared<ReopeningHandler>();
  }

 private:
  Stage stage_ = Stage::kSettingUp;
};

}  // namespace install::update_metadata_parser
