#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "foundation/json/Value.h"

namespace install::update_metadata_parser {

/// Reports a member that is absent or of the wrong kind: throws "Invalid data provided for '", the
/// context directly followed by the key, and "'".
[[noreturn]] inline void throwInvalidData(std::string_view key, std::string_view context) {
  std::string message = "Invalid data provided for '";
  message.append(context).append(key).append("'");
  throw std::runtime_error(message);
}

/// Returns the member `key` of `object` as T. Used for every member that a document must have.
///
/// A null passes the first test and fails in the conversion: this distinguishes a null from a
/// member that is absent or of another kind.
///
/// \param key      of the member, in UTF-8
/// \param object   where it is looked up
/// \param context  precedes the key in the message
///
/// \throws std::runtime_error  "Invalid data provided for '...'": the member is absent or is
///                             neither T nor null; "invalid conversion: ... to ...": it is null, or
///                             `object` is not an object
template <class T>
T getMember(std::string_view key, const foundation::json::Value& object, std::string_view context) {
  const foundation::json::Value& member = object[key];
  if (!member.is<T>() && !member.is<std::nullptr_t>()) {
    throwInvalidData(key, context);
  }
  return member.as<T>();
}

/// Like getMember(), for a string.
inline std::string getString(std::string_view key, const foundation::json::Value& object,
                             std::string_view context) {
  return getMember<std::string>(key, object, context);
}

/// Like getMember(), for a number. The typed 64-bit integers do not count as numbers.
inline double getNumber(std::string_view key, const foundation::json::Value& object,
                        std::string_view context) {
  return getMember<double>(key, object, context);
}

/// Like getMember(), for an object.
inline foundation::json::Object getObject(std::string_view key,
                                          const foundation::json::Value& object,
                                          std::string_view context) {
  return getMember<foundation::json::Object>(key, object, context);
}

/// Like getMember(), for an array.
inline foundation::json::Array getArray(std::string_view key, const foundation::json::Value& object,
                                        std::string_view context) {
  return getMember<foundation::json::Array>(key, object, context);
}

}  // namespace install::update_metadata_parser
