#include "foundation/json/MemberOrder.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace foundation::json::detail {
namespace {

// So few members are ranked, each against each: more comparisons than sorting takes, but none that
// a processor could guess wrong.
constexpr std::size_t kFewMembers = 16;

std::string_view keyAt(const Rep* members, std::size_t place) noexcept {
  const Rep& key = members[place * MemberOrder::kSlotsOfMember];
  return {key.content.characters, key.size()};
}

std::uint64_t loadBigEndian32(const char* bytes) noexcept {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i != 4; ++i) {
    number = number << 8 | static_cast<unsigned char>(bytes[i]);
  }
  return number;
}

// The first eight bytes of a key, zeros behind a shorter one: orders as the bytes do, but for keys
// that agree in it.
std::uint64_t prefixOf(std::string_view key) noexcept {
  const char* const bytes = key.data();
  if (key.size() >= 4) {
    // Two halves, which overlap in a short key; what they have in common is shifted out.
    const std::size_t size = std::min<std::size_t>(key.size(), 8);
    const std::uint64_t tail = loadBigEndian32(bytes + size - 4) << (8 * (8 - size));
    return loadBigEndian32(bytes) << 32 | (tail & 0xFFFFFFFF);
  }
  std::uint64_t prefix = 0;
  for (std::size_t i = 0; i != key.size(); ++i) {
    prefix |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (56 - 8 * i);
  }
  return prefix;
}

// Compares two members whose keys have the same prefix or not.
template <class SortKey>
int compare(const Rep* members, const SortKey& left, const SortKey& right) noexcept {
  if (left.prefix != right.prefix) {
    return left.prefix < right.prefix ? -1 : 1;
  }
  return keyAt(members, left.place).compare(keyAt(members, right.place));
}

}  // namespace

void MemberOrder::find(const Rep* members, std::size_t count) {
  if (keys_.size() < std::max(count, kFewMembers)) {
    keys_.resize(std::max({count, kFewMembers, 2 * keys_.size()}));
  }
  size_ = count;
  if (count <= 2) {
    orderTwo(members, count);
  } else if (count <= kFewMembers) {
    orderFew(members, count);
  } else {
    orderMany(members, count);
  }
}

void MemberOrder::orderTwo(const Rep* members, std::size_t count) {
  std::size_t first = 0;
  if (count == 2) {
    const std::string_view left = keyAt(members, 0);
    const std::string_view right = keyAt(members, 1);
    const std::uint64_t leftPrefix = prefixOf(left);
    const std::uint64_t rightPrefix = prefixOf(right);
    first = leftPrefix > rightPrefix ? 1 : 0;
    if (leftPrefix == rightPrefix) {
      const int order = left.compare(right);
      first = order > 0 ? 1 : 0;
      size_ = order == 0 ? 1 : 2;
    }
  }
  keys_[0].place = first;
  keys_[1].place = 1 - first;
}

void MemberOrder::orderFew(const Rep* members, std::size_t count) {
  std::array<std::uint64_t, kFewMembers> prefixes;
  std::array<std::size_t, kFewMembers> ranks;
  for (std::size_t i = 0; i != count; ++i) {
    const std::uint64_t prefix = prefixOf(keyAt(members, i));
    std::size_t rank = 0;
    for (std::size_t j = 0; j != i; ++j) {
      // As a number: a branch here could not be foreseen.
      const auto isBehind = static_cast<std::size_t>(prefixes[j] <= prefix);
      rank += isBehind;
      ranks[j] += 1 - isBehind;
    }
    prefixes[i] = prefix;
    ranks[i] = rank;
  }
  for (std::size_t i = 0; i != count; ++i) {
    keys_[ranks[i]] = {prefixes[i], i};
  }
  bool isDecided = true;
  for (std::size_t i = 1; i < count; ++i) {
    isDecided = isDecided && keys_[i - 1].prefix != keys_[i].prefix;
  }
  if (!isDecided) {
    sort(members);
    dropRepeated(members);
  }
}

void MemberOrder::orderMany(const Rep* members, std::size_t count) {
  bool ascends = true;
  bool descends = true;
  keys_[0] = {prefixOf(keyAt(members, 0)), 0};
  for (std::size_t i = 1; i != count; ++i) {
    keys_[i] = {prefixOf(keyAt(members, i)), i};
    const int order = compare(members, keys_[i - 1], keys_[i]);
    ascends = ascends && order <= 0;
    descends = descends && order > 0;
  }
  if (descends) {
    std::reverse(keys_.data(), keys_.data() + count);
  } else if (!ascends) {
    sort(members);
  }
  dropRepeated(members);
}

void MemberOrder::sort(const Rep* members) {
  std::sort(keys_.data(), keys_.data() + size_, [&](const SortKey& left, const SortKey& right) {
    const int order = compare(members, left, right);
    return order != 0 ? order < 0 : left.place < right.place;
  });
}

void MemberOrder::dropRepeated(const Rep* members) {
  SortKey* const end = std::unique(keys_.data(), keys_.data() + size_,
                                   [&](const SortKey& left, const SortKey& right) {
                                     return compare(members, left, right) == 0;
                                   });
  size_ = static_cast<std::size_t>(end - keys_.data());
}

}  // namespace foundation::json::detail
