#include "mf/zero/fields/PrimitiveSequence.h"

#include <algorithm>
#include <limits>
#include <new>

#include "mf/zero/memory/ModelImpl.h"

namespace mf::zero {
namespace {

// The two loops have no early exits, so that the compiler can vectorize them.

bool isNarrow(std::u16string_view text) noexcept {
  char16_t units = 0;
  for (const char16_t unit : text) {
    units = static_cast<char16_t>(units | unit);
  }
  return units < 0x80;
}

void copyNarrow(std::u16string_view text, unsigned char* bytes) noexcept {
  for (std::size_t index = 0; index != text.size(); ++index) {
    bytes[index] = static_cast<unsigned char>(text[index]);
  }
}

CompactString::Stored* store(std::u16string_view text, BlockMemory& memory) {
  using Stored = CompactString::Stored;
  const bool narrow = isNarrow(text);
  const std::size_t bytes = narrow ? text.size() : text.size() * sizeof(char16_t);
  // cppcheck-suppress legacyUninitvar ; this is its initialization
  auto* stored = new (memory.allocate(sizeof(Stored) + bytes)) Stored{};
  constexpr std::size_t kSizeBits = std::numeric_limits<std::size_t>::max() >> 1;
  stored->size = text.size() & kSizeBits;
  stored->narrow = narrow ? 1 : 0;
  void* units = stored + 1;
  if (narrow) {
    copyNarrow(text, static_cast<unsigned char*>(units));
  } else {
    std::copy(text.begin(), text.end(), static_cast<char16_t*>(units));
  }
  return stored;
}

}  // namespace

void PrimitiveSequence<std::u16string>::push_back(std::u16string_view value) {
  if (duplicates_ == Duplicates::kRefused && holds(value)) {
    return;
  }
  CompactString::Stored* stored = store(value, Slab::of(*owner_).model->texts());
  if (last_ == nullptr) {
    first_ = stored;
  } else {
    last_->next = stored;
  }
  last_ = stored;
  ++size_;
}

bool PrimitiveSequence<std::u16string>::holds(std::u16string_view value) const noexcept {
  return std::any_of(begin(), end(),
                     [value](const CompactString& held) { return held.equals(value); });
}

}  // namespace mf::zero
