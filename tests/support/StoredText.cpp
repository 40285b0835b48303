#include "support/StoredText.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace test_support {

std::string storedText(const std::filesystem::path& path, const std::string& now) {
  if (std::getenv("UMP_UPDATE_GOLDEN") != nullptr) {
    std::ofstream stream(path, std::ios_base::binary);
    stream << now;
    stream.close();
    if (!stream) {
      throw std::runtime_error("cannot write " + path.string());
    }
  }
  std::ifstream stream(path, std::ios_base::binary);
  if (!stream.is_open()) {
    throw std::runtime_error("cannot open " + path.string());
  }
  return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

}  // namespace test_support
