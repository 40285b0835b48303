// Loads a document and prints its releases, or why it cannot be loaded: load DOCUMENT

#include <exception>
#include <iostream>
#include <memory>
#include <string>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "text.h"

namespace {

using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataJsonParser;

// The parser may be destroyed; its result keeps everything that the queries need.
std::shared_ptr<UpdateMetaData> load(const std::u16string& path) {
  UpdateMetaDataJsonParser parser(path);
  return parser.parseUpdateMetaDataJson();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: load DOCUMENT\n";
    return 2;
  }
  try {
    const auto update = load(toUtf16(argv[1]));
    std::cout << "from " << toUtf8(update->getBaseReleaseFamily()) << ", version "
              << toUtf8(update->getBaseReleaseVersion()) << "\nto "
              << toUtf8(update->getTargetReleaseFamily()) << ", version "
              << toUtf8(update->getTargetReleaseVersion()) << ", update level "
              << update->getTargetUpdateLevelForQorv() << '\n';
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << argv[1] << ": " << failure.what() << '\n';
    return 1;
  }
}
