#include "foundation/json/Value.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include "foundation/json/Storage.h"

namespace foundation::json {
namespace {

using detail::NodeStorage;
using detail::Rep;

char* newCharacters(std::string_view text) {
  char* const characters = static_cast<char*>(NodeStorage::create(text.size()));
  std::memcpy(characters, text.data(), text.size());
  return characters;
}

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

const Value Value::UNDEFINED;

Value::Value(std::string_view text) : Value(rep(traits<std::string>::index, 0)) {
  if (!text.empty()) {
    rep_.content.characters = newCharacters(text);
    rep_.tag = Rep::tagOf(traits<std::string>::index, text.size(), true);
  }
}

Value::Value(Array array) noexcept : Value(rep(traits<Array>::index, 0)) {
  const std::size_t size = std::exchange(array.size_, 0);
  rep_.content.elements = std::exchange(array.elements_, nullptr);
  rep_.tag = Rep::tagOf(traits<Array>::index, size, size != 0);
}

Value::Value(Object object) noexcept : Value(rep(traits<Object>::index, 0)) {
  const std::size_t size = std::exchange(object.size_, 0);
  rep_.content.members = std::exchange(object.members_, nullptr);
  rep_.tag = Rep::tagOf(traits<Object>::index, size, size != 0);
}

void Value::share() {
  if (is<std::string>() && !rep_.owns()) {
    // Characters inside a text are not counted themselves.
    rep_.content.characters = newCharacters({rep_.content.characters, rep_.size()});
  } else {
    detail::retain(rep_.content.elements);
  }
  rep_.tag |= Rep::kOwns;
}

const char* Value::typeName() const noexcept {
  return detail::typeNameOf(index());
}

void Value::throwInvalidConversion(std::size_t required) const {
  throw std::runtime_error(std::string("invalid conversion: ") + typeName() + " to " +
                           detail::typeNameOf(required));
}

const Value& Value::operator[](std::string_view key) const {
  require(traits<Object>::index);
  const Member* const member = detail::findMember(rep_.content.members, rep_.size(), key);
  return member != rep_.content.members + rep_.size() ? member->second : UNDEFINED;
}

bool operator==(const Value& left, const Value& right) {
  std::vector<std::pair<const Value*, const Value*>> pending = {{&left, &right}};
  while (!pending.empty()) {
    const Rep& a = pending.back().first->rep_;
    const Rep& b = pending.back().second->rep_;
    pending.pop_back();
    // The tag also contains the ownership flag, which does not affect equality.
    if (a.index() != b.index() || a.size() != b.size()) {
      return false;
    }
    switch (a.index()) {
      case traits<bool>::index:
        if (a.content.boolean != b.content.boolean) {
          return false;
        }
        break;
      case traits<double>::index:
        if (a.content.number != b.content.number) {
          return false;
        }
        break;
      case traits<float>::index:
        if (a.content.single != b.content.single) {
          return false;
        }
        break;
      case traits<std::int64_t>::index:
      case traits<std::uint64_t>::index:
        if (a.content.unsignedInteger != b.content.unsignedInteger) {
          return false;
        }
        break;
      case traits<std::string>::index:
        if (!std::equal(a.content.characters, a.content.characters + a.size(),
                        b.content.characters)) {
          return false;
        }
        break;
      case traits<Array>::index:
        for (std::size_t i = 0; i != a.size(); ++i) {
          pending.emplace_back(&a.content.elements[i], &b.content.elements[i]);
        }
        break;
      case traits<Object>::index:
        for (std::size_t i = 0; i != a.size(); ++i) {
          if (a.content.members[i].first != b.content.members[i].first) {
            return false;
          }
          pending.emplace_back(&a.content.members[i].second, &b.content.members[i].second);
        }
        break;
      default:
        break;  // undefined and null have no content
    }
  }
  return true;
}

Array::Array(std::initializer_list<Value> elements) : Array(std::vector<Value>(elements)) {}

Array::Array(std::vector<Value> elements) : size_(elements.size()) {
  if (elements.empty()) {
    return;
  }
  auto* const nodes = static_cast<Value*>(NodeStorage::create(size_ * sizeof(Value)));
  std::uninitialized_move(elements.begin(), elements.end(), nodes);
  NodeStorage::own(nodes, nodes, size_, sizeof(Value));
  elements_ = nodes;
}

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
  // The keys follow the members.
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
