#ifdef _WIN32
#define _CRT_RAND_S  // declares rand_s()
#include <algorithm>
#include <cstdlib>
#include <cstring>
#endif

#include "foundation/core/random_bytes.h"

#ifdef __linux__
#include <unistd.h>
#endif

namespace foundation::core {

#if defined(__linux__)

bool fillWithRandomBytes(void* memory, std::size_t bytes) noexcept {
  return ::getentropy(memory, bytes) == 0;
}

#elif defined(_WIN32)

bool fillWithRandomBytes(void* memory, std::size_t bytes) noexcept {
  char* out = static_cast<char*>(memory);
  while (bytes != 0) {
    unsigned number = 0;
    if (::rand_s(&number) != 0) {
      return false;
    }
    const std::size_t size = std::min(bytes, sizeof number);
    std::memcpy(out, &number, size);
    out += size;
    bytes -= size;
  }
  return true;
}

#else

bool fillWithRandomBytes(void*, std::size_t) noexcept {
  return false;
}

#endif

}  // namespace foundation::core
