#include "foundation/core/large_pages.h"

#include <cstdint>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace foundation::core {

void adviseLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) noexcept {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
  constexpr std::size_t kLargePage = std::size_t{2} << 20;
  const std::size_t before =
      (kLargePage - (reinterpret_cast<std::uintptr_t>(memory) & (kLargePage - 1))) &
      (kLargePage - 1);
  if (bytes < before + kLargePage) {
    return;
  }
  const std::size_t whole = (bytes - before) & ~(kLargePage - 1);
  // Whatever comes back: without large pages the memory serves as well.
  static_cast<void>(::madvise(static_cast<char*>(memory) + before, whole, MADV_HUGEPAGE));
#endif
}

}  // namespace foundation::core
