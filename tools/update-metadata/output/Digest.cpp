#include "output/Digest.h"

#include <openssl/evp.h>

#include <array>
#include <cstddef>
#include <stdexcept>

namespace update_metadata_tool::output {

std::string sha256(std::string_view bytes) {
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned size = 0;
  if (EVP_Digest(bytes.data(), bytes.size(), digest.data(), &size, EVP_sha256(), nullptr) != 1) {
    throw std::runtime_error("the SHA-256 digest of the document cannot be computed");
  }
  constexpr const char* kDigits = "0123456789abcdef";
  std::string text;
  for (std::size_t index = 0; index != size; ++index) {
    text += kDigits[digest[index] >> 4U];
    text += kDigits[digest[index] & 0xFU];
  }
  return text;
}

}  // namespace update_metadata_tool::output
