#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "mf/zero/memory/BlockMemory.h"
#include "mf/zero/text/Name.h"

namespace mf::zero {

/// Stores each UTF-16 string once, however often it is added, and keeps it until the pool is
/// destroyed.
///
/// Strings are found by a hash with a random key of each pool, so that strings cannot be chosen to
/// collide.
class StringPool {
 public:
  /// The key of the hash: arbitrary, unpredictable numbers.
  struct HashKey {
    std::array<std::uint64_t, 8> words;  ///< one for each word of a block
    std::uint64_t low;                   ///< the initial value of a hash
    std::uint64_t high;                  ///< mixed with the high half of each block's sum
    std::uint64_t size;                  ///< multiplied by the number of units
  };

  /// Makes an empty pool with its own random key.
  StringPool() noexcept;

  /// Makes an empty pool with a given key.
  explicit StringPool(const HashKey& key) noexcept : key_(key) {}

  StringPool(const StringPool&) = delete;
  StringPool& operator=(const StringPool&) = delete;

  /// Returns the one stored string equal to `text`.
  ///
  /// Constant expected time apart from reading the text. If it throws std::bad_alloc, the pool has
  /// not changed.
  const InternedString& intern(std::u16string_view text);

 private:
  using Table = std::vector<const InternedString*>;  // open addressing, a power of two of places

  const InternedString& add(std::u16string_view text, std::size_t hash);
  void growTable();
  static void put(const InternedString& string, Table& table) noexcept;

  HashKey key_;
  Table table_;
  std::size_t used_ = 0;
  BlockMemory memory_;
};

}  // namespace mf::zero
