#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace test_support {

/// Finds different keys whose standard hash is the same. std::hash has no secret, so anyone can
/// compute such keys.
class HashCollisions {
 public:
  /// Returns `count` well-formed names of eight UTF-16 units that share one std::hash, without
  /// tabs, line feeds or other control characters.
  static std::vector<std::u16string> names(std::size_t count) {
    std::vector<std::u16string> found;
    for (std::uint64_t number = 0; found.size() != count; ++number) {
      // Starts with letters, then adds the units that lead from their state to the wanted one.
      std::u16string name;
      for (unsigned digit = 0; digit != 4; ++digit) {
        name += static_cast<char16_t>(u'A' + (number >> 5 * digit) % 32);
      }
      const std::uint64_t state =
          ((kSeed ^ 2 * kBlock * kFactor) ^ scrambled(blockOf(name))) * kFactor;
      const std::uint64_t second = unscrambled(state ^ kWanted);
      for (unsigned unit = 0; unit != 4; ++unit) {
        name += static_cast<char16_t>(second >> 16 * unit);
      }
      if (isPlain(name)) {
        found.push_back(name);
      }
    }
    return found;
  }

  /// Returns `count` numbers that share one bucket, or a few, of an unordered container.
  static std::vector<std::uint32_t> numbers(std::size_t count) {
    std::unordered_map<std::uint32_t, bool> table;
    for (std::uint32_t number = 0; number != count; ++number) {
      table.emplace(number, true);
    }
    const std::uint64_t buckets = table.bucket_count();
    const std::uint64_t inOneBucket = (std::uint64_t{1} << 32) / buckets;
    std::vector<std::uint32_t> found;
    for (std::uint64_t number = 0; number != count; ++number) {
      found.push_back(
          static_cast<std::uint32_t>(number % inOneBucket * buckets + number / inOneBucket));
    }
    return found;
  }

 private:
  // libstdc++'s hash for blocks of eight bytes, and its seed.
  static constexpr std::uint64_t kSeed = 0xC70F6907;
  static constexpr std::uint64_t kFactor = 0xC6A4A7935BD1E995;
  static constexpr std::uint64_t kBlock = 8;
  static constexpr std::uint64_t kWanted = 0x0123456789ABCDEF;

  static constexpr std::uint64_t shifted(std::uint64_t bits) { return bits ^ (bits >> 47); }

  static constexpr std::uint64_t scrambled(std::uint64_t block) {
    return shifted(block * kFactor) * kFactor;
  }

  // An odd number is its own inverse in its low three bits; each Newton step doubles the correct
  // bits.
  static constexpr std::uint64_t inverse(std::uint64_t odd) {
    std::uint64_t result = odd;
    for (int step = 0; step != 5; ++step) {
      result *= 2 - odd * result;
    }
    return result;
  }

  // The shift by 47 bits is its own inverse.
  static constexpr std::uint64_t unscrambled(std::uint64_t block) {
    return shifted(block * inverse(kFactor)) * inverse(kFactor);
  }

  static std::uint64_t blockOf(const std::u16string& units) {
    std::uint64_t block = 0;
    for (unsigned unit = 0; unit != 4; ++unit) {
      block |= std::uint64_t{units[unit]} << 16 * unit;
    }
    return block;
  }

  static bool isPlain(const std::u16string& name) {
    for (const char16_t unit : name) {
      if (unit < 0xA0 && (unit < 0x20 || unit >= 0x7F)) {
        return false;
      }
      if (unit >= 0xD800 && unit < 0xE000) {
        return false;
      }
    }
    return true;
  }
};

}  // namespace test_support
