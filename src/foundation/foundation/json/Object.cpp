#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

#include "foundation/json/Storage.h"
#include "foundation/json/Value.h"

namespace foundation::json {

const Member* detail::findMember(const Member* members, std::size_t size,
                                 std::string_view key) noexcept {
  constexpr std::size_t kFewMembers = 8;
  const Member* const end = members + size;
  const Member* member = members;
  if (size > kFewMembers) {
    member = std::lower_bound(members, end, key, [](const Member& left, std::string_view right) {
      return left.first < right;
    });
    return member != end && member->first == key ? member : end;
  }
  // Lengths mostly decide.
  while (member != end && member->first != key) {
    ++member;
  }
  return member;
}

namespace {

std::vector<std::pair<std::string, Value>> copied(
    std::initializer_list<std::pair<std::string_view, Value>> members) {
  std::vector<std::pair<std::string, Value>> copies;
  copies.reserve(members.size());
  for (const auto& [key, value] : members) {
    copies.emplace_back(std::string(key), value);
  }
  return copies;
}

}  // namespace

Object::Object(std::initializer_list<std::pair<std::string_view, Value>> members)
    : Object(copied(members)) {}

Object::Object(std::vector<std::pair<std::string, Value>> members) {
  std::stable_sort(members.begin(), members.end(),
                   [](const auto& left, const auto& right) { return left.first < right.first; });
  members.erase(
      std::unique(members.begin(), members.end(),
                  [](const auto& left, const auto& right) { return left.first == right.first; }),
      members.end());
  if (members.empty()) {
    return;
  }
  std::size_t keyBytes = 0;
  for (const auto& member : members) {
    keyBytes += member.first.size();
  }
  // The keys lie behind the members.
  const std::size_t memberBytes = members.size() * sizeof(Member);
  void* const memory = detail::NodeStorage::create(memberBytes + keyBytes);
  char* keys = static_cast<char*>(memory) + memberBytes;
  auto* node = static_cast<Member*>(memory);
  for (auto& [key, value] : members) {
    key.copy(keys, key.size());
    new (node++) Member{std::string_view(keys, key.size()), std::move(value)};
    keys += key.size();
  }
  members_ = static_cast<const Member*>(memory);
  size_ = members.size();
  detail::NodeStorage::own(members_, &members_->second, size_, sizeof(Member));
}

Object::const_iterator Object::find(std::string_view key) const noexcept {
  return detail::findMember(begin(), size(), key);
}

const Value& Object::at(std::string_view key) const {
  const const_iterator member = find(key);
  if (member == end()) {
    throw std::out_of_range("map::at");
  }
  return member->second;
}

}  // namespace foundation::json
