#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/json/Value.h"

namespace test_support {

/// Returns a valid document with two of everything; in each variation, the first stays faultless.
foundation::json::Value sampleDocument();

/// Returns the calls that a handler receives from the sample document, in order.
std::vector<std::string> sampleCalls();

/// Returns the first `count` of them.
std::vector<std::string> sampleCalls(std::size_t count);

/// The path to a value in a document: object keys and array positions.
using Path = std::vector<std::string>;

/// Returns `root` with `value` at `path`, which exists or is the place of a new member.
foundation::json::Value with(const foundation::json::Value& root, const Path& path,
                             const foundation::json::Value& value);

/// Returns `root` without the member at `path`.
foundation::json::Value without(const foundation::json::Value& root, const Path& path);

/// Writes a value as text.
///
/// \pre strings and keys need no escapes, and all kinds exist in JSON
std::string toJson(const foundation::json::Value& value);

/// A value with the name of its kind as messages use it.
struct Kind {
  std::string name;
  foundation::json::Value value;
  bool inText;  ///< whether a text can hold a single value of this kind
};

/// Returns one value of each of the ten kinds, in order.
const std::vector<Kind>& kinds();

}  // namespace test_support
