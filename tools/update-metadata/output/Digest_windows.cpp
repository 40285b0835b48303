#include "output/Digest.h"

#include <windows.h>

#include <bcrypt.h>

#include <array>
#include <cstddef>
#include <stdexcept>

#include "output/Text.h"

namespace update_metadata_tool::output {
namespace {

void check(NTSTATUS status) {
  if (status < 0) {
    throw std::runtime_error("the SHA-256 digest of the document cannot be computed");
  }
}

/// The computation of one digest.
class Hash {
 public:
  Hash() {
    check(::BCryptOpenAlgorithmProvider(&algorithm_, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
    const NTSTATUS status = ::BCryptCreateHash(algorithm_, &hash_, nullptr, 0, nullptr, 0, 0);
    if (status < 0) {
      ::BCryptCloseAlgorithmProvider(algorithm_, 0);
    }
    check(status);
  }
  Hash(const Hash&) = delete;
  Hash& operator=(const Hash&) = delete;
  ~Hash() {
    ::BCryptDestroyHash(hash_);
    ::BCryptCloseAlgorithmProvider(algorithm_, 0);
  }

  void add(std::string_view bytes) {
    constexpr std::size_t kBytesAtOnce = std::size_t{1} << 30U;
    while (!bytes.empty()) {
      const std::string_view part = bytes.substr(0, kBytesAtOnce);
      // Only read, although the function does not say so.
      auto* const data = reinterpret_cast<unsigned char*>(const_cast<char*>(part.data()));
      check(::BCryptHashData(hash_, data, static_cast<ULONG>(part.size()), 0));
      bytes.remove_prefix(part.size());
    }
  }

  std::array<unsigned char, 32> finish() {
    std::array<unsigned char, 32> digest{};
    check(::BCryptFinishHash(hash_, digest.data(), static_cast<ULONG>(digest.size()), 0));
    return digest;
  }

 private:
  BCRYPT_ALG_HANDLE algorithm_ = nullptr;
  BCRYPT_HASH_HANDLE hash_ = nullptr;
};

}  // namespace

std::string sha256(std::string_view bytes) {
  Hash hash;
  hash.add(bytes);
  std::string text;
  for (const unsigned char byte : hash.finish()) {
    appendHexadecimal(byte, 2, text, kLowerCaseHexadecimal);
  }
  return text;
}

}  // namespace update_metadata_tool::output
