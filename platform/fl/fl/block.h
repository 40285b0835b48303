#pragma once

#include <cstddef>
#include <cstring>

namespace fl::i18n {

/// How many characters are tested for ASCII and converted in one step.
inline constexpr std::ptrdiff_t kBlock = 8;

#if defined(__GNUC__)

/// Converts one block of ASCII characters.
///
/// Uses vectors because, depending on the optimization level, one compiler or the other splits a
/// plain loop over the block into single characters.
template <typename From, typename To>
void convertBlock(const From* in, To* out) {
  using FromBlock __attribute__((vector_size(kBlock * sizeof(From)))) = From;
  using ToBlock __attribute__((vector_size(kBlock * sizeof(To)))) = To;
  FromBlock from;
  std::memcpy(&from, in, sizeof from);
  const ToBlock to = __builtin_convertvector(from, ToBlock);
  std::memcpy(out, &to, sizeof to);
}

#else

/// Converts one block of ASCII characters.
template <typename From, typename To>
void convertBlock(const From* in, To* out) {
  for (std::ptrdiff_t i = 0; i != kBlock; ++i) {
    out[i] = static_cast<To>(in[i]);
  }
}

#endif

}  // namespace fl::i18n
