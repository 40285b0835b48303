#pragma once

#include <string>
#include <vector>

#include "foundation/json/Value.h"

namespace test_support {

/// A valid document with two of everything, the first of each without a fault in every variation.
foundation::json::Value sampleDocument();

/// The calls that a handler gets from the sample document, in order.
std::vector<std::string> sampleCalls();

/// The way to a value of a document: keys of objects, positions in arrays.
using Path = std::vector<std::string>;

/// Returns `root` with `value` at `path`, which exists or is the place of a new member.
foundation::json::Value with(const foundation::json::Value& root, const Path& path,
                             const foundation::json::Value& value);

/// Returns `root` without the member at `path`.
foundation::json::Value without(const foundation::json::Value& root, const Path& path);

/// Writes a value as text. \pre strings and keys need no escapes, and there are only kinds that
/// JSON has
std::string toJson(const foundation::json::Value& value);

/// A value with the name of its kind, as messages give it.
struct Kind {
  std::string name;
  foundation::json::Value value;
  bool inText;  ///< whether a text can hold a single value of this kind
};

/// One value of each of the ten kinds, in their order.
const std::vector<Kind>& kinds();

}  // namespace test_support
