// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>

namespace mf::zero {

/// The 16 bytes of a universally unique identifier; all zero, the nil UUID, unless given.
struct Uuid {
  std::array<std::uint8_t, 16> bytes{};  ///< in the order of a UUID's text form
};

}  // namespace mf::zero
