#pragma once

#include <string>
#include <string_view>

namespace update_metadata_tool::output {

/// The SHA-256 digest of `bytes` (FIPS 180-4), as 64 lower-case hexadecimal digits.
///
/// \throws std::runtime_error  the system's library cannot compute it
std::string sha256(std::string_view bytes);

}  // namespace update_metadata_tool::output
