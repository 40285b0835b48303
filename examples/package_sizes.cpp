// Prints the size of every package that an update brings.

#include <filesystem>
#include <iostream>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

int main() {
  install::update_metadata_parser::UpdateMetaDataJsonParser parser(u"update.json");
  const auto update = parser.parseUpdateMetaDataJson();
  for (const auto& [package, sizes] : update->getUpdateSizeForComponentsToExtract()) {
    std::cout << std::filesystem::path(package).string() << ": " << sizes.first << " bytes\n";
  }
}
