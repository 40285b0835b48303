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

/// What is known of each of the ten alternatives: its place in the order of the type list, which is
/// Value::index(), and the name that messages give it. Both are constants of each specialisation,
/// `index` and `name`.
template <class T>
struct traits;

/// \cond the ten specialisations, of which the comment above tells
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

/// What a value consists of: 16 plain bytes. Rules for their use are those of Value and
/// TreeBuilder.
struct Rep {
  /// The content of a scalar, or where that of a string, an array or an object begins.
  union Content {
    /// \cond named for what they hold
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

  static constexpr unsigned kSizeShift = 8;         ///< where the length begins in the tag
  static constexpr std::uint64_t kIndexMask = 0xF;  ///< the bits of the tag that hold the index
  static constexpr std::uint64_t kOwns = 0x10;      ///< set if there is a reference on the storage

  Content content;    ///< meaningless for undefined, for null and for what is empty
  std::uint64_t tag;  ///< index, kOwns, and from bit 8 the length of a string, array or object

  /// The number of the alternative.
  constexpr std::size_t index() const noexcept { return tag & kIndexMask; }

  /// The length: of a string in bytes, of an array in elements, of an object in members; else 0.
  constexpr std::size_t size() const noexcept { return tag >> kSizeShift; }

  /// Tells whether a reference on the storage of the content belongs to this.
  constexpr bool owns() const noexcept { return (tag & kOwns) != 0; }

  /// Puts a tag together.
  static constexpr std::uint64_t tagOf(std::size_t index, std::size_t size, bool owns) noexcept {
    return (std::uint64_t{size} << kSizeShift) | (owns ? kOwns : 0) | index;
  }
};

/// Takes one more reference on the storage of a non-empty array's elements or an object's members.
FOUNDATION_EXPORT void retain(const void* nodes) noexcept;

/// Drops a reference on the storage of nodes or of an owned string's characters.
FOUNDATION_EXPORT void release(const void* nodes) noexcept;

/// Finds a member by key; the end if there is none. So few members that order does not pay are
/// looked through, more are searched by halves.
const Member* findMember(const Member* members, std::size_t size, std::string_view key) noexcept;

/// The name of the alternative of that index.
const char* typeNameOf(std::size_t index) noexcept;

}  // namespace detail

}  // namespace foundation::json
