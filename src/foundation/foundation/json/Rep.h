// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/core/export.h"

namespace foundation::json {

class Array;
class Object;
class Value;
struct Member;

/// The alternative of a value that holds nothing, as the look-up of an absent member yields it.
struct Undefined {};

/// The properties of each of the ten alternatives: its place in the type list, which is
/// Value::index(), and its name in messages. Both are constants of each specialization, `index` and
/// `name`.
template <class T>
struct traits;

/// \cond the ten specializations described above
template <>
struct traits<Undefined> {
  static constexpr std::size_t index = 0;
  static constexpr const char* name = "undefined";
};
template <>
struct traits<std::nullptr_t> {
  static constexpr std::size_t index = 1;
  static constexpr const char* name = "null";
};
template <>
struct traits<bool> {
  static constexpr std::size_t index = 2;
  static constexpr const char* name = "boolean";
};
template <>
struct traits<double> {
  static constexpr std::size_t index = 3;
  static constexpr const char* name = "double";
};
template <>
struct traits<std::string> {
  static constexpr std::size_t index = 4;
  static constexpr const char* name = "string";
};
template <>
struct traits<Array> {
  static constexpr std::size_t index = 5;
  static constexpr const char* name = "array";
};
template <>
struct traits<Object> {
  static constexpr std::size_t index = 6;
  static constexpr const char* name = "object";
};
template <>
struct traits<float> {
  static constexpr std::size_t index = 7;
  static constexpr const char* name = "float";
};
template <>
struct traits<std::int64_t> {
  static constexpr std::size_t index = 8;
  static constexpr const char* name = "int64";
};
template <>
struct traits<std::uint64_t> {
  static constexpr std::size_t index = 9;
  static constexpr const char* name = "uint64";
};
/// \endcond

namespace detail {

class Storage;

/// The representation of a value: 16 plain bytes. Value and TreeBuilder define the rules for using
/// it.
struct Rep {
  /// The content of a scalar, or the address of the content of a string, an array or an object.
  union Content {
    /// \cond named after their content
    std::uint64_t unsignedInteger;
    std::int64_t signedInteger;
    double number;
    float single;
    bool boolean;
    const char* characters;
    const Value* elements;
    const Member* members;
    /// \endcond
  };

  static constexpr unsigned kSizeShift = 8;         ///< position of the length in the tag
  static constexpr std::uint64_t kIndexMask = 0xF;  ///< the bits of the tag for the index
  static constexpr std::uint64_t kOwns = 0x10;      ///< set if this owns a reference on the storage

  Content content;    ///< meaningless for undefined, null and empty content
  std::uint64_t tag;  ///< index, kOwns, and from bit 8 the length of a string, array or object

  /// The number of the alternative.
  constexpr std::size_t index() const noexcept {
    return static_cast<std::size_t>(tag & kIndexMask);
  }

  /// The length: bytes of a string, elements of an array, members of an object; otherwise 0.
  constexpr std::size_t size() const noexcept {
    return static_cast<std::size_t>(tag >> kSizeShift);
  }

  /// Whether this owns a reference on the storage of its content.
  constexpr bool owns() const noexcept { return (tag & kOwns) != 0; }

  /// Composes a tag.
  static constexpr std::uint64_t tagOf(std::size_t index, std::size_t size, bool owns) noexcept {
    return (std::uint64_t{size} << kSizeShift) | (owns ? kOwns : 0) | index;
  }
};

/// Adds a reference to the storage of a non-empty array's elements or object's members.
FOUNDATION_EXPORT void retain(const void* nodes) noexcept;

/// Drops a reference to the storage of nodes or of an owned string's characters.
FOUNDATION_EXPORT void release(const void* nodes) noexcept;

/// Finds a member by key; returns the end if there is none. Searches a few members one by one and
/// more of them by bisection.
const Member* findMember(const Member* members, std::size_t size, std::string_view key) noexcept;

/// The name of the alternative with that index.
const char* typeNameOf(std::size_t index) noexcept;

}  // namespace detail

}  // namespace foundation::json
