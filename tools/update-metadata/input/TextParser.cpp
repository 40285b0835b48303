#include "input/TextParser.h"

#include <utility>

namespace update_metadata_tool::input {

TextParser::TextParser(const std::u16string& file, std::string text,
                       std::shared_ptr<Handler> handlerToFill)
    : UpdateMetaDataJsonParser(file),
      text_(std::move(text)),
      handlerToFill_(std::move(handlerToFill)) {}

std::string TextParser::readFile(const std::u16string& /*path*/) {
  return std::move(text_);
}

std::shared_ptr<TextParser::Handler> TextParser::getUpdateMetaDataHandler() const {
  return handlerToFill_ ? handlerToFill_ : UpdateMetaDataJsonParser::getUpdateMetaDataHandler();
}

}  // namespace update_metadata_tool::input
