#pragma once

#include <memory>
#include <string>

#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

namespace update_metadata_tool::input {

/// Has the library load a document whose text is at hand.
class TextParser : public install::update_metadata_parser::UpdateMetaDataJsonParser {
 public:
  using Handler = install::update_metadata_parser::UpdateMetaDataHandler;

  /// \param file           the document's path, which the library's messages quote; not opened
  /// \param text           used up by the load
  /// \param handlerToFill  keeps the document; a handler of the library's without it
  TextParser(const std::u16string& file, std::string text,
             std::shared_ptr<Handler> handlerToFill = nullptr);

  std::string readFile(const std::u16string& path) override;
  std::shared_ptr<Handler> getUpdateMetaDataHandler() const override;

 private:
  std::string text_;
  std::shared_ptr<Handler> handlerToFill_;
};

}  // namespace update_metadata_tool::input
