#include "foundation/core/large_pages.h"

#include <cstdint>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace foundation::core {

#if defined(__linux__) && defined(MADV_HUGEPAGE)

namespace {

// Systems that have these calls have no smaller pages. If the guess is wrong, only the hint is
// lost.
constexpr std::uintptr_t kPage = std::uintptr_t{4} << 10;

void advise(std::uintptr_t begin, std::uintptr_t end, int advice) noexcept {
  // The result does not matter: the memory works without the hint as well.
  static_cast<void>(::madvise(reinterpret_cast<void*>(begin), end - begin, advice));
}

}  // namespace

void adviseLargePages(void* memory, std::size_t bytes) noexcept {
  const auto begin = reinterpret_cast<std::uintptr_t>(memory);
  const std::uintptr_t end = begin + bytes;
  const std::uintptr_t firstLargePage = (begin + kLargePage - 1) & ~(kLargePage - 1);
  if (end < firstLargePage + kLargePage) {
    return;
  }
  // Includes the pages that are only partly in the memory: a block with its own mapping must not be
  // split, so that it can still be moved as a whole.
  advise(begin & ~(kPage - 1), (end + kPage - 1) & ~(kPage - 1), MADV_HUGEPAGE);
}

void discardPages(void* memory, std::size_t bytes) noexcept {
  const std::uintptr_t begin =
      (reinterpret_cast<std::uintptr_t>(memory) + kPage - 1) & ~(kPage - 1);
  const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(memory) + bytes) & ~(kPage - 1);
  if (begin < end) {
    advise(begin, end, MADV_DONTNEED);
  }
}

#else

void adviseLargePages(void*, std::size_t) noexcept {}
void discardPages(void*, std::size_t) noexcept {}

#endif

}  // namespace foundation::core
