#pragma once

#include <cstddef>

namespace foundation::core {

/// Fills `memory` with random numbers from the system and returns true. Returns false if the system
/// has none or fails; `memory` then contains anything.
///
/// Much faster than the standard library's random device, and allocates nothing.
///
/// \pre at most 256 bytes
bool fillWithRandomBytes(void* memory, std::size_t bytes) noexcept;

}  // namespace foundation::core
