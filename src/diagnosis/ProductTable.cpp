#include "diagnosis/ProductTable.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "diagnosis/Text.h"

namespace install::update_metadata_parser::diagnosis {

std::vector<std::string> readProductNames(const std::u16string& productData) {
  std::filesystem::path path = std::filesystem::u8path(toUtf8(productData));
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    path /= kProductTable;
  }
  std::vector<std::string> names;
  std::ifstream table(path, std::ios::binary);
  std::string line;
  std::getline(table, line);  // the header
  while (std::getline(table, line)) {
    const std::size_t begin = line.find('\t') + 1;
    const std::size_t end = line.find('\t', begin);
    if (begin != 0 && end != std::string::npos) {
      names.push_back(line.substr(begin, end - begin));
    }
  }
  return names;
}

}  // namespace install::update_metadata_parser::diagnosis
