// Prints what an update does to each product: print_plan DOCUMENT PRODUCT-DATA

#include <exception>
#include <iostream>
#include <map>
#include <set>
#include <string>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "text.h"

namespace {

using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataJsonParser;

void printPackages(const std::string& verb,
                   const std::map<std::u16string, std::set<std::u16string>>& packages) {
  for (const auto& [baseCode, keys] : packages) {
    for (const std::u16string& key : keys) {
      std::cout << toUtf8(baseCode) << ": " << verb << ' ' << toUtf8(key) << '\n';
    }
  }
}

void printPlan(const UpdateMetaData& update, const std::u16string& productData) {
  std::cout << toUtf8(update.getBaseReleaseFamily()) << ", "
            << toUtf8(update.getBaseReleaseVersion()) << " to "
            << toUtf8(update.getTargetReleaseVersion()) << '\n';
  printPackages("delete", update.getComponentsToDelete(productData));
  printPackages("extract", update.getComponentsToExtract(productData));
  for (const auto& [key, filesAndSize] : update.getComponentsWithFilesToDelete()) {
    for (const std::u16string& file : filesAndSize.first) {
      std::cout << "all: delete " << toUtf8(file) << " of " << toUtf8(key) << '\n';
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: print_plan DOCUMENT PRODUCT-DATA\n";
    return 2;
  }
  try {
    UpdateMetaDataJsonParser parser(toUtf16(argv[1]));
    printPlan(*parser.parseUpdateMetaDataJson(), toUtf16(argv[2]));
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
