#pragma once

#include <cstddef>

namespace foundation::core {

/// The size of a large page, and the alignment of memory that is to consist of such pages.
inline constexpr std::size_t kLargePage = std::size_t{2} << 20;

/// Blocks of at least this size are worth rounding up to large pages.
inline constexpr std::size_t kLargePagesFrom = std::size_t{4} << 20;

/// Asks the system to back `memory`, which is fresh, with large pages. A page is set up at its
/// first touch, which for large blocks costs more than filling them.
///
/// A large page occupies all of its bytes as soon as any part is touched, so memory that contains
/// no whole one is left alone. This is a hint: nothing happens if the system has no such pages or
/// rejects the request. The memory may be freed, or grow by realloc(), as usual.
void adviseLargePages(void* memory, std::size_t bytes) noexcept;

/// Returns the pages that lie wholly in `memory` to the system; their content is no longer needed.
/// The memory stays allocated, with undefined content. This is a hint as well.
void discardPages(void* memory, std::size_t bytes) noexcept;

}  // namespace foundation::core
