#include "mf/zero/text/StringPool.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <new>
#include <random>
#include <type_traits>
#include <utility>

#include "foundation/core/compiler.h"
#include "foundation/core/random_bytes.h"
#include "mf/zero/text/WideNumber.h"

namespace mf::zero {
namespace {

constexpr std::size_t kFirstTable = 64;

// A word is four units, a block eight words. A shorter string is laid out in one block, with some
// words overlapping, so that names of all usual sizes take the same steps: lengths are
// unpredictable, and a misprediction costs more than the extra steps.
constexpr std::size_t kUnitsPerWord = 4;
constexpr std::size_t kUnitsPerBlock = 32;

std::uint64_t wordAt(const char16_t* units) noexcept {
  std::uint64_t word;
  std::memcpy(&word, units, sizeof word);
  return word;
}

// Where the words of `size` units begin, for at least two and at most eight words.
struct WordPlaces {
  explicit WordPlaces(std::size_t size) noexcept
      : second(std::min<std::size_t>(8, size - 8)), third(size - 8 - second), fourth(size - 8) {}

  std::size_t second;
  std::size_t third;
  std::size_t fourth;
};

// Both halves of the product, folded: each bit depends on all bits of both factors.
std::uint64_t multiplyAndFold(std::uint64_t left, std::uint64_t right) noexcept {
  WideNumber product;
  product.addProduct(left, right);
  const PlainWideNumber halves = product.halves();
  return halves.low ^ halves.high;
}

// The sum of the products of pairs of words, each with its word of the key added. Two different
// blocks of one size have the same sum for one of 2^64 keys.
class KeyedSum {
 public:
  explicit KeyedSum(const StringPool::HashKey& key) noexcept : key_(key) {}

  // Adds eight units, a pair of words.
  template <std::size_t kPair>
  void add(const char16_t* units) noexcept {
    add<kPair>(wordAt(units), wordAt(units + kUnitsPerWord));
  }

  template <std::size_t kPair>
  void add(std::uint64_t left, std::uint64_t right) noexcept {
    sum_.addProduct(left + key_.words[2 * kPair], right + key_.words[2 * kPair + 1]);
  }

  std::uint64_t foldedInto(std::uint64_t state) const noexcept {
    const PlainWideNumber halves = sum_.halves();
    return multiplyAndFold(halves.low ^ state, halves.high ^ key_.high);
  }

 private:
  const StringPool::HashKey& key_;
  WideNumber sum_;
};

std::uint64_t hashOfBlock(const char16_t* units, std::uint64_t state,
                          const StringPool::HashKey& key) noexcept {
  KeyedSum sum(key);
  sum.add<0>(units);
  sum.add<1>(units + 8);
  sum.add<2>(units + 16);
  sum.add<3>(units + 24);
  return sum.foldedInto(state);
}

// For more than one block: the last one overlaps the one before. Separate from the code for names.
FOUNDATION_NOINLINE std::uint64_t hashOfLong(std::u16string_view text, std::uint64_t state,
                                             const StringPool::HashKey& key) noexcept {
  const char16_t* units = text.data();
  const char16_t* last = units + text.size() - kUnitsPerBlock;
  for (; units < last; units += kUnitsPerBlock) {
    state = hashOfBlock(units, state, key);
  }
  return hashOfBlock(last, state, key);
}

std::uint64_t hashOf(std::u16string_view text, const StringPool::HashKey& key) noexcept {
  const char16_t* units = text.data();
  const std::size_t size = text.size();
  const std::uint64_t state = key.low ^ (size * key.size);
  if (size > kUnitsPerBlock) {
    return hashOfLong(text, state, key);
  }
  KeyedSum sum(key);
  if (size >= 8) {
    const WordPlaces places(size);
    sum.add<0>(units);
    sum.add<1>(units + places.second);
    sum.add<2>(units + places.third);
    sum.add<3>(units + places.fourth);
  } else if (size >= kUnitsPerWord) {
    sum.add<0>(wordAt(units), wordAt(units + size - kUnitsPerWord));
  } else if (size != 0) {
    sum.add<0>(units[0] | std::uint64_t{units[size / 2]} << 16, units[size - 1]);
  }
  return sum.foldedInto(state);
}

bool sameUnits(const char16_t* left, const char16_t* right, std::size_t size) noexcept {
  if (size < 8 || size > kUnitsPerBlock) {
    // An empty view may have no address.
    return size == 0 || std::memcmp(left, right, size * sizeof(char16_t)) == 0;
  }
  // A size that the compiler knows needs no call.
  constexpr std::size_t kPairBytes = 2 * sizeof(std::uint64_t);
  const WordPlaces places(size);
  return std::memcmp(left, right, kPairBytes) == 0 &&
         std::memcmp(left + places.second, right + places.second, kPairBytes) == 0 &&
         std::memcmp(left + places.third, right + places.third, kPairBytes) == 0 &&
         std::memcmp(left + places.fourth, right + places.fourth, kPairBytes) == 0;
}

StringPool::HashKey drawKey() noexcept {
  StringPool::HashKey key;
  static_assert(std::is_trivially_copyable_v<StringPool::HashKey> &&
                sizeof key == 11 * sizeof(std::uint64_t));
  if (foundation::core::fillWithRandomBytes(&key, sizeof key)) {
    return key;
  }
  // Without random numbers from the system, uses values that differ from run to run.
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  std::mt19937_64 random(static_cast<std::uint64_t>(now) ^ reinterpret_cast<std::uintptr_t>(&key));
  for (std::uint64_t& word : key.words) {
    word = random();
  }
  key.low = random();
  key.high = random();
  key.size = random();
  return key;
}

}  // namespace

StringPool::StringPool() noexcept : key_(drawKey()) {}

const InternedString& StringPool::intern(std::u16string_view text) {
  const std::size_t hash = static_cast<std::size_t>(hashOf(text, key_));
  if (!table_.empty()) {
    const std::size_t mask = table_.size() - 1;
    for (std::size_t place = hash & mask; table_[place] != nullptr; place = (place + 1) & mask) {
      const InternedString& stored = *table_[place];
      if (stored.hash == hash && stored.size == text.size() &&
          sameUnits(stored.view().data(), text.data(), text.size())) {
        return stored;
      }
    }
  }
  return add(text, hash);
}

const InternedString& StringPool::add(std::u16string_view text, std::size_t hash) {
  if (used_ * 2 >= table_.size()) {
    growTable();
  }
  const std::size_t bytes = text.size() * sizeof(char16_t);
  auto* string =
      new (memory_.allocate(sizeof(InternedString) + bytes)) InternedString{hash, text.size()};
  if (bytes != 0) {
    std::memcpy(string + 1, text.data(), bytes);
  }
  put(*string, table_);
  ++used_;
  return *string;
}

void StringPool::growTable() {
  Table larger(std::max(kFirstTable, table_.size() * 2));
  for (const InternedString* string : table_) {
    if (string != nullptr) {
      put(*string, larger);
    }
  }
  table_.swap(larger);
}

void StringPool::put(const InternedString& string, Table& table) noexcept {
  const std::size_t mask = table.size() - 1;
  std::size_t place = string.hash & mask;
  while (table[place] != nullptr) {
    place = (place + 1) & mask;
  }
  table[place] = &string;
}

}  // namespace mf::zero
