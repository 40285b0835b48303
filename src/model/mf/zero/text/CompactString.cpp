#include "mf/zero/text/CompactString.h"

#include <algorithm>
#include <cstring>

namespace mf::zero {
namespace {

const unsigned char* narrowUnits(const CompactString::Stored& stored) noexcept {
  return static_cast<const unsigned char*>(static_cast<const void*>(&stored + 1));
}

const char16_t* wideUnits(const CompactString::Stored& stored) noexcept {
  return static_cast<const char16_t*>(static_cast<const void*>(&stored + 1));
}

// Compares units of one width with units of another.
template <class Left, class Right>
int compareUnits(const Left* left, const Right* right, std::size_t size) noexcept {
  for (std::size_t index = 0; index != size; ++index) {
    if (left[index] != right[index]) {
      return left[index] < right[index] ? -1 : 1;
    }
  }
  return 0;
}

// Calls `function` with the units of `stored` in their own width.
template <class Function>
auto withUnits(const CompactString::Stored& stored, Function function) {
  return stored.narrow != 0 ? function(narrowUnits(stored)) : function(wideUnits(stored));
}

}  // namespace

std::u16string CompactString::text() const {
  return withUnits(*stored_,
                   [&](const auto* units) { return std::u16string(units, units + size()); });
}

int CompactString::compare(const CompactString& other) const noexcept {
  const std::size_t common = std::min(size(), other.size());
  int order;
  if (stored_->narrow != 0 && other.stored_->narrow != 0) {
    order = std::memcmp(narrowUnits(*stored_), narrowUnits(*other.stored_), common);
  } else {
    order = withUnits(*stored_, [&](const auto* left) {
      return withUnits(*other.stored_,
                       [&](const auto* right) { return compareUnits(left, right, common); });
    });
  }
  if (order != 0) {
    return order;
  }
  return static_cast<int>(size() > other.size()) - static_cast<int>(size() < other.size());
}

bool CompactString::equals(std::u16string_view text) const noexcept {
  return size() == text.size() && withUnits(*stored_, [&](const auto* units) {
           return compareUnits(units, text.data(), text.size()) == 0;
         });
}

}  // namespace mf::zero
