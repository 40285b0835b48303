#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "install/update_metadata_parser/Limits.h"

namespace update_metadata_tool::input {

/// No limit on bytes, or on packages.
constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

/// The limits on documents that the user gave.
struct GivenLimits {
  std::optional<std::uint64_t> bytes;

  /// On the packages named and on the files to delete. The keys' limit grows with it.
  std::optional<std::uint64_t> packages;
};

/// The limits for `file`: what the user gave; otherwise none for a file, and the library's defaults
/// for standard input.
install::update_metadata_parser::Limits limitsOf(const std::string& file, const GivenLimits& given);

}  // namespace update_metadata_tool::input
