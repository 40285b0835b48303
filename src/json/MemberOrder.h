#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/json/Value.h"

namespace foundation::json::detail {

/// Finds the order of the members of an object, for one object after another: by the bytes of their
/// keys, keeping only the first of equal keys.
///
/// A member occupies two slots: its key, which is a string, and its value.
class MemberOrder {
 public:
  static constexpr std::size_t kSlotsOfMember = 2;  ///< the key, then the value

  /// Finds the order of `count` members. Linear in the bytes that distinguish their keys, which are
  /// read eight at a time, plus at most n log n comparisons of prefixes.
  /// \throws std::bad_alloc
  void find(const Rep* members, std::size_t count);

  /// How many members remain: fewer than there were if keys are equal.
  std::size_t size() const noexcept { return size_; }

  /// The original place of the member that is at `index` in the order.
  std::size_t operator[](std::size_t index) const noexcept { return keys_[index].place; }

 private:
  // Eight bytes of a key, as a number that orders as they do, and the place of its member.
  struct SortKey {
    std::uint64_t prefix;
    std::size_t place;
  };

  // Keys that agree in their first `depth` bytes.
  struct Range {
    SortKey* begin;
    SortKey* end;
    std::size_t depth;
  };

  void orderUpToTwo(const Rep* members, std::size_t count);
  void orderFew(const Rep* members, std::size_t count);
  void orderMany(const Rep* members, std::size_t count);
  void sort(const Rep* members);
  void sortByPrefix(SortKey* begin, SortKey* end);
  void sortByDigits(SortKey* begin, SortKey* end);
  void orderAgreeing(const Rep* members, const Range& range);
  SortKey* orderEnding(const Rep* members, const Range& range);
  void dropRepeated();

  std::vector<SortKey> keys_;  // never shrinks: only the first size_ are in use
  std::size_t size_ = 0;
  std::vector<Range> ranges_;     // those still to be sorted
  std::vector<SortKey> scratch_;  // the target of sorting by a digit
};

}  // namespace foundation::json::detail
