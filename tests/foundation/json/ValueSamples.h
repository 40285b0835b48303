#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "foundation/json/Value.h"

namespace test_support {

using foundation::json::Array;
using foundation::json::Object;
using foundation::json::traits;
using foundation::json::Undefined;
using foundation::json::Value;

/// A value of each kind, with the properties of the kind.
struct Sample {
  Value value;
  std::size_t index;
  const char* name;
};

inline std::vector<Sample> samples() {
  return {{Value(), 0, traits<Undefined>::name},
          {Value(nullptr), 1, traits<std::nullptr_t>::name},
          {Value(true), 2, traits<bool>::name},
          {Value(1.5), 3, traits<double>::name},
          {Value("text"), 4, traits<std::string>::name},
          {Value(Array{1.0}), 5, traits<Array>::name},
          {Value(Object{{"key", 1.0}}), 6, traits<Object>::name},
          {Value(1.5f), 7, traits<float>::name},
          {Value(std::int64_t{-1}), 8, traits<std::int64_t>::name},
          {Value(std::uint64_t{1}), 9, traits<std::uint64_t>::name}};
}

}  // namespace test_support
