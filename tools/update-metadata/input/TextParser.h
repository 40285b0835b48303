#pragma once

#include <memory>
#include <string>

#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

namespace update_metadata_tool::input {

/// Loads a document whose text has been read already.
class TextParser : public install::update_metadata_parser::UpdateMetaDataJsonParser {
 public:
  using Handler = install::update_metadata_parser::UpdateMetaDataHandler;

  /// \param file           the document's path, quoted in the library's messages; not opened
  /// \param text           consumed by loading
  /// \param handlerToFill  receives the document; null creates the library's own handler
  TextParser(const std::u16string& file, std::string text,
             std::shared_ptr<Handler> handlerToFill = nullptr);

  std::string readFile(const std::u16string& path) override;
  std::shared_ptr<Handler> getUpdateMetaDataHandler() const override;

 private:
  std::string text_;
  std::shared_ptr<Handler> handlerToFill_;
};

}  // namespace update_metadata_tool::input
