#include "foundation/json/Rep.h"

#include <algorithm>

#include "foundation/json/Storage.h"
#include "foundation/json/Value.h"

namespace foundation::json::detail {
namespace {

// By index.
constexpr const char* kTypeNames[] = {traits<Undefined>::name,    traits<std::nullptr_t>::name,
                                      traits<bool>::name,         traits<double>::name,
                                      traits<std::string>::name,  traits<Array>::name,
                                      traits<Object>::name,       traits<float>::name,
                                      traits<std::int64_t>::name, traits<std::uint64_t>::name};

}  // namespace

void retain(const void* nodes) noexcept {
  Storage::of(nodes).retain();
}

void release(const void* nodes) noexcept {
  Storage::of(nodes).release();
}

const Member* findMember(const Member* members, std::size_t size, std::string_view key) noexcept {
  constexpr std::size_t kFewMembers = 8;
  const Member* const end = members + size;
  const Member* member = members;
  if (size > kFewMembers) {
    member = std::lower_bound(members, end, key, [](const Member& left, std::string_view right) {
      return left.first < right;
    });
    return member != end && member->first == key ? member : end;
  }
  // Comparing lengths first decides most comparisons.
  while (member != end && member->first != key) {
    ++member;
  }
  return member;
}

const char* typeNameOf(std::size_t index) noexcept {
  return kTypeNames[index];
}

}  // namespace foundation::json::detail
