// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "foundation/core/export.h"
#include "foundation/json/Rep.h"

namespace foundation::json {

/// One JSON value: one of ten alternatives, numbered by index() in the order of the type list.
///
/// A value owns everything below it, and copies behave as deep copies. Values are immutable except
/// for assignment as a whole, so arrays and objects share reference-counted content: moving takes
/// constant time, and so does copying them. Copying a string takes time linear in its length.
/// Destruction uses no stack per level and allocates nothing; comparison uses no stack per level.
/// Only memory limits the depth. A value and its copies belong to one thread at a time.
///
/// A part of a value that was read from text keeps the whole text in memory while it lives.
class FOUNDATION_EXPORT Value {
 public:
  /// The one undefined value that look-ups of absent members refer to.
  static const Value UNDEFINED;

  /// Makes an undefined value.
  constexpr Value() noexcept : Value(rep(0, 0)) {}

  /// Makes an undefined value.
  constexpr Value(Undefined) noexcept : Value() {}

  /// Makes the value null.
  constexpr Value(std::nullptr_t) noexcept : Value(rep(1, 0)) {}

  /// From exactly this type, so that no number or pointer silently becomes another alternative.
  template <class T,
            class = std::enable_if_t<std::is_same_v<T, bool> || std::is_same_v<T, double> ||
                                     std::is_same_v<T, float> || std::is_same_v<T, std::int64_t> ||
                                     std::is_same_v<T, std::uint64_t>>>
  Value(T scalar) noexcept : Value(rep(traits<T>::index, 0)) {
    if constexpr (std::is_same_v<T, bool>) {
      rep_.content.boolean = scalar;
    } else if constexpr (std::is_same_v<T, double>) {
      rep_.content.number = scalar;
    } else if constexpr (std::is_same_v<T, float>) {
      rep_.content.single = scalar;
    } else if constexpr (std::is_same_v<T, std::int64_t>) {
      rep_.content.signedInteger = scalar;
    } else {
      rep_.content.unsignedInteger = scalar;
    }
  }

  /// Copies the bytes of a string, assumed to be UTF-8 and not checked. \throws std::bad_alloc
  Value(std::string_view text);

  /// Copies the bytes of a string, NUL bytes included. \throws std::bad_alloc
  Value(const std::string& text) : Value(std::string_view(text)) {}

  /// Copies the bytes of a string up to its terminator. \pre `text` is not null.
  /// \throws std::bad_alloc
  Value(const char* text) : Value(std::string_view(text)) {}

  /// Takes over the content of an array; constant time.
  Value(Array array) noexcept;

  /// Takes over the content of an object; constant time.
  Value(Object object) noexcept;

  /// Shares the content of an array or object, in constant time, or copies that of a string.
  /// \throws std::bad_alloc  only for a string
  Value(const Value& other) : rep_(other.rep_) {
    if (hasNodes()) {
      share();
    }
  }

  /// Takes over the other's content and leaves it undefined.
  Value(Value&& other) noexcept : rep_(std::exchange(other.rep_, rep(0, 0))) {}

  /// Copies the other's content as copy construction does, then drops its own, even if that
  /// contains `other`.
  /// \throws std::bad_alloc  only for a string; nothing has changed then
  Value& operator=(const Value& other) {
    Value(other).swap(*this);
    return *this;
  }

  /// Takes over the other's content, leaves it undefined and drops its own.
  Value& operator=(Value&& other) noexcept {
    Value(std::move(other)).swap(*this);  // cppcheck-suppress accessMoved ; it is moved once
    return *this;
  }
  ~Value() {
    if (rep_.owns()) {
      detail::release(rep_.content.elements);
    }
  }

  /// Exchanges the contents of two values in constant time.
  void swap(Value& other) noexcept { std::swap(rep_, other.rep_); }

  /// The same, for algorithms.
  friend void swap(Value& left, Value& right) noexcept { left.swap(right); }

  /// The number of the alternative, from 0.
  std::size_t index() const noexcept { return rep_.index(); }

  /// The name of the alternative, as messages use it.
  const char* typeName() const noexcept;

  /// Whether the value is of the alternative T.
  template <class T>
  bool is() const noexcept {
    return index() == traits<T>::index;
  }

  /// Returns the content as T: bool, double, float, std::int64_t, std::uint64_t, std::string, Array
  /// or Object. std::string_view reads a string in place; it is valid as long as this value.
  ///
  /// Nothing is converted. \throws std::runtime_error "invalid conversion: ", the name of the
  /// value's alternative, " to " and the name of T's.
  template <class T>
  T as() const;

  /// Looks up a member by key, compared byte by byte; UNDEFINED if there is none.
  ///
  /// Logarithmic in the number of members; nothing is copied or inserted.
  /// \throws std::runtime_error "invalid conversion: " ... to object, if this is not an object
  const Value& operator[](std::string_view key) const;

  /// Whether both have the same alternative with equal content. Numbers are equal as C++ compares
  /// them, so NaN equals nothing. Linear; may throw std::bad_alloc for nested values.
  friend FOUNDATION_EXPORT bool operator==(const Value& left, const Value& right);

  /// The opposite of equality.
  friend bool operator!=(const Value& left, const Value& right) { return !(left == right); }

 private:
  friend class Array;
  friend class Object;
  friend class TreeBuilder;
  friend class detail::Storage;

  constexpr explicit Value(detail::Rep rep) noexcept : rep_(rep) {}

  static constexpr detail::Rep rep(std::size_t index, std::size_t size) noexcept {
    return {{}, detail::Rep::tagOf(index, size, false)};
  }

  // Strings, arrays and objects have adjacent indices; an empty one has nothing to share.
  bool hasNodes() const noexcept {
    return rep_.index() - traits<std::string>::index <= 2 && rep_.size() != 0;
  }
  void share();
  void require(std::size_t index) const {
    if (rep_.index() != index) {
      throwInvalidConversion(index);
    }
  }
  [[noreturn]] void throwInvalidConversion(std::size_t required) const;

  detail::Rep rep_;
};

/// The elements of an array value: immutable, shared by its copies.
class FOUNDATION_EXPORT Array {
 public:
  /// Makes an array without elements; allocates nothing.
  Array() noexcept = default;

  /// Copies the elements. Linear in their number. \throws std::bad_alloc
  Array(std::initializer_list<Value> elements);

  /// Takes over the elements, each in constant time. \throws std::bad_alloc
  explicit Array(std::vector<Value> elements);

  /// Shares the elements; constant time.
  Array(const Array& other) noexcept : elements_(other.elements_), size_(other.size_) {
    if (size_ != 0) {
      detail::retain(elements_);
    }
  }

  /// Takes over the elements and leaves the other array empty.
  Array(Array&& other) noexcept
      : elements_(std::exchange(other.elements_, nullptr)), size_(std::exchange(other.size_, 0)) {}

  /// Shares or takes over the other's elements, and drops its own.
  Array& operator=(Array other) noexcept {
    std::swap(elements_, other.elements_);
    std::swap(size_, other.size_);
    return *this;
  }
  ~Array() {
    if (size_ != 0) {
      detail::release(elements_);
    }
  }

  /// The number of elements.
  std::size_t size() const noexcept { return size_; }

  /// Whether there are no elements.
  bool empty() const noexcept { return size_ == 0; }

  /// The element at `index`, from 0. \pre `index` is less than size().
  const Value& operator[](std::size_t index) const noexcept { return elements_[index]; }

  /// The first element. The elements are valid as long as this array or a copy of it.
  const Value* begin() const noexcept { return elements_; }

  /// The end of the elements.
  const Value* end() const noexcept { return elements_ + size_; }

  /// Whether both contain equal values in the same order, as values compare.
  friend bool operator==(const Array& left, const Array& right) {
    return Value(left) == Value(right);
  }

  /// The opposite of equality.
  friend bool operator!=(const Array& left, const Array& right) { return !(left == right); }

 private:
  friend class Value;

  const Value* elements_ = nullptr;
  std::size_t size_ = 0;
};

/// One member of an object: its key, in UTF-8, and its value.
struct Member {
  std::string_view first;  ///< the key, valid as long as the object or a copy of it
  Value second;            ///< its value
};

/// The members of an object value: immutable, shared by its copies, ordered by the bytes of their
/// keys, compared as unsigned numbers, with a prefix first. Its interface is that of an ordered
/// map.
class FOUNDATION_EXPORT Object {
 public:
  /// Iterates over the members in the order of their keys.
  using const_iterator = const Member*;

  /// Makes an object without members; allocates nothing.
  Object() noexcept = default;

  /// Copies the keys and the values. The first of equal keys is kept. O(n log n) comparisons.
  /// \throws std::bad_alloc
  Object(std::initializer_list<std::pair<std::string_view, Value>> members);

  /// Copies the keys and takes over the values, by the same rules. \throws std::bad_alloc
  explicit Object(std::vector<std::pair<std::string, Value>> members);

  /// Shares the members; constant time.
  Object(const Object& other) noexcept : members_(other.members_), size_(other.size_) {
    if (size_ != 0) {
      detail::retain(members_);
    }
  }

  /// Takes over the members and leaves the other object empty.
  Object(Object&& other) noexcept
      : members_(std::exchange(other.members_, nullptr)), size_(std::exchange(other.size_, 0)) {}

  /// Shares or takes over the other's members, and drops its own.
  Object& operator=(Object other) noexcept {
    std::swap(members_, other.members_);
    std::swap(size_, other.size_);
    return *this;
  }
  ~Object() {
    if (size_ != 0) {
      detail::release(members_);
    }
  }

  /// The number of members.
  std::size_t size() const noexcept { return size_; }

  /// Whether there are no members.
  bool empty() const noexcept { return size_ == 0; }

  /// The member with the smallest key. The members are valid as long as this object or a copy of
  /// it.
  const_iterator begin() const noexcept { return members_; }

  /// The end of the members.
  const_iterator end() const noexcept { return members_ + size_; }

  /// Finds a member by key; end() if there is none. Logarithmic.
  const_iterator find(std::string_view key) const noexcept;

  /// The number of members with that key: 0 or 1.
  std::size_t count(std::string_view key) const noexcept { return find(key) == end() ? 0 : 1; }

  /// Returns the value of a member. \throws std::out_of_range "map::at" if there is none.
  const Value& at(std::string_view key) const;

  /// Whether both have the same keys with equal values.
  friend bool operator==(const Object& left, const Object& right) {
    return Value(left) == Value(right);
  }

  /// The opposite of equality.
  friend bool operator!=(const Object& left, const Object& right) { return !(left == right); }

 private:
  friend class Value;

  const Member* members_ = nullptr;
  std::size_t size_ = 0;
};

template <class T>
T Value::as() const {
  if constexpr (std::is_same_v<T, std::string_view>) {
    require(traits<std::string>::index);
    return {rep_.content.characters, rep_.size()};
  } else {
    require(traits<T>::index);
    if constexpr (std::is_same_v<T, bool>) {
      return rep_.content.boolean;
    } else if constexpr (std::is_same_v<T, double>) {
      return rep_.content.number;
    } else if constexpr (std::is_same_v<T, float>) {
      return rep_.content.single;
    } else if constexpr (std::is_same_v<T, std::int64_t>) {
      return rep_.content.signedInteger;
    } else if constexpr (std::is_same_v<T, std::uint64_t>) {
      return rep_.content.unsignedInteger;
    } else if constexpr (std::is_same_v<T, std::string>) {
      return std::string(as<std::string_view>());
    } else if constexpr (std::is_same_v<T, Array>) {
      Array array;
      if (rep_.size() != 0) {
        detail::retain(rep_.content.elements);
        array.elements_ = rep_.content.elements;
        array.size_ = rep_.size();
      }
      return array;
    } else {
      static_assert(std::is_same_v<T, Object>);
      Object object;
      if (rep_.size() != 0) {
        detail::retain(rep_.content.members);
        object.members_ = rep_.content.members;
        object.size_ = rep_.size();
      }
      return object;
    }
  }
}

}  // namespace foundation::json
