#pragma once

#include <cstddef>

namespace foundation::core {

/// The size of a large page, and the alignment of memory that is to consist of such pages.
inline constexpr std::size_t kLargePage = std::size_t{2} << 20;

/// Asks the system to back `memory`, which is fresh, by large pages: a page is made ready at its
/// first touch, which for large blocks costs more than filling them.
///
/// Such a page takes all of its bytes as soon as it is touched anywhere, so memory in which no
/// whole one lies is left alone. A hint: where the system has no such pages or refuses, nothing
/// happens. The memory may be freed, or grow by realloc(), as it would otherwise.
void adviseLargePages(void* memory, std::size_t bytes) noexcept;

/// Gives the pages that lie wholly in `memory`, whose content is not needed any more, back to the
/// system. The memory stays allocated; what it holds is undefined. A hint as well.
void discardPages(void* memory, std::size_t bytes) noexcept;

}  // namespace foundation::core
