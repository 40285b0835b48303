#include "foundation/core/large_pages.h"

#include <cstdint>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace foundation::core {

void adviseLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) noexcept {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
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

void discardPages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) noexcept {
#ifdef __linux__
  // No page is larger where the system has this call; a smaller one only keeps a little more.
  constexpr std::size_t kPage = std::size_t{4} << 10;
  const std::size_t before =
      (kPage - (reinterpret_cast<std::uintptr_t>(memory) & (kPage - 1))) & (kPage - 1);
  if (bytes < before + kPage) {
    return;
  }
  const std::size_t whole = (bytes - before) & ~(kPage - 1);
  static_cast<void>(::madvise(static_cast<char*>(memory) + before, whole, MADV_DONTNEED));
#endif
}

}  // namespace foundation::core
