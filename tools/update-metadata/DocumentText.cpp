#include "DocumentText.h"

#include <iostream>
#include <iterator>

#include "Text.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

namespace update_metadata_tool {

std::string readDocument(const std::string& file) {
  if (file == kStandardInput) {
    return std::string(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  }
  const std::u16string path = toUtf16(file);
  return install::update_metadata_parser::UpdateMetaDataJsonParser(path).readFile(path);
}

}  // namespace update_metadata_tool
