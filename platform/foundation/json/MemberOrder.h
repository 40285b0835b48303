#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/json/Value.h"

namespace foundation::json::detail {

/// Finds the order of the members of one object after the other: by the bytes of their keys, of
/// equal keys the first alone.
///
/// A member is two slots, its key, which is a string, and its value.
class MemberOrder {
 public:
  static constexpr std::size_t kSlotsOfMember = 2;

  /// Finds the order of `count` members. n log n comparisons at most; linear for members that come
  /// in order or in the opposite one. Most comparisons look at eight bytes of each key alone.
  /// \throws std::bad_alloc
  void find(const Rep* members, std::size_t count);

  /// How many members are left: fewer than there were, if keys are equal.
  std::size_t size() const noexcept { return size_; }

  /// The place, among the members as they came, of the one that is `index`-th in order.
  std::size_t operator[](std::size_t index) const noexcept { return keys_[index].place; }

 private:
  // The first bytes of a key, as a number that orders as they do, and the place of its member.
  struct SortKey {
    std::uint64_t prefix;
    std::size_t place;
  };

  void orderTwo(const Rep* members, std::size_t count);
  void orderFew(const Rep* members, std::size_t count);
  void orderMany(const Rep* members, std::size_t count);
  void sort(const Rep* members);
  void dropRepeated(const Rep* members);

  std::vector<SortKey> keys_;  // grows only: the first size_ count
  std::size_t size_ = 0;
};

}  // namespace foundation::json::detail
