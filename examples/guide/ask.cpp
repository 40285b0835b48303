// Asks every question about a document: ask DOCUMENT PRODUCT-DATA BASE-CODE

#include <exception>
#include <iostream>
#include <set>
#include <string>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "text.h"

namespace {

using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataJsonParser;

void print(const char* what, const std::set<std::u16string>& entries) {
  std::cout << what;
  for (const std::u16string& entry : entries) {
    std::cout << ' ' << toUtf8(entry);
  }
  std::cout << '\n';
}

void askAboutEveryProduct(const UpdateMetaData& update, const std::u16string& productData) {
  for (const auto& [baseCode, packages] : update.getComponentsToDelete(productData)) {
    std::cout << toUtf8(baseCode);
    print(" deletes", packages);
  }
  for (const auto& [baseCode, packages] : update.getComponentsToExtract(productData)) {
    std::cout << toUtf8(baseCode);
    print(" extracts", packages);
  }
}

void askAboutOneProduct(const UpdateMetaData& update, const std::u16string& baseCode,
                        const std::u16string& productData) {
  print("to delete:", update.getComponentsToDelete(baseCode, productData));
  print("to extract:", update.getComponentsToExtract(baseCode, productData));
}

void askAboutSizes(const UpdateMetaData& update) {
  for (const auto& [package, sizes] : update.getUpdateSizeForComponentsToExtract()) {
    const auto& [packed, unpacked] = sizes;
    std::cout << toUtf8(package) << " has " << packed << " bytes, unpacked " << unpacked << '\n';
  }
}

void askAboutFiles(const UpdateMetaData& update) {
  for (const auto& [package, filesAndSize] : update.getComponentsWithFilesToDelete()) {
    const auto& [files, size] = filesAndSize;
    std::cout << toUtf8(package) << " of " << size << " bytes loses";
    print("", files);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: ask DOCUMENT PRODUCT-DATA BASE-CODE\n";
    return 2;
  }
  try {
    const std::u16string productData = toUtf16(argv[2]);
    const auto update = UpdateMetaDataJsonParser(toUtf16(argv[1])).parseUpdateMetaDataJson();
    askAboutEveryProduct(*update, productData);
    askAboutOneProduct(*update, toUtf16(argv[3]), productData);
    askAboutSizes(*update);
    askAboutFiles(*update);
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
