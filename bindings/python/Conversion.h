#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include <pybind11/pybind11.h>

namespace update_metadata_python {

/// Converts Python's text to UTF-16. An unpaired surrogate is kept.
std::u16string toUtf16(const pybind11::str& text);

/// Converts a path to UTF-16: a str, or an object whose __fspath__() returns one.
///
/// Raises TypeError for a path of bytes.
std::u16string toPath(const pybind11::object& path);

/// Converts UTF-8 to a str; ill-formed parts become U+FFFD.
pybind11::str toText(std::string_view text);

/// Converts an answer, or a part of one, to new Python objects: text to str, sets to set, maps to
/// dict, pairs to tuple.
pybind11::object toPython(const std::u16string& text);
pybind11::object toPython(std::int64_t number);

template <class First, class Second>
pybind11::object toPython(const std::pair<First, Second>& pair);

template <class Key>
pybind11::object toPython(const std::set<Key>& keys) {
  pybind11::set result;
  for (const Key& key : keys) {
    result.add(toPython(key));
  }
  return std::move(result);
}

template <class Key, class Mapped>
pybind11::object toPython(const std::map<Key, Mapped>& entries) {
  pybind11::dict result;
  for (const auto& [key, mapped] : entries) {
    result[toPython(key)] = toPython(mapped);
  }
  return std::move(result);
}

template <class First, class Second>
pybind11::object toPython(const std::pair<First, Second>& pair) {
  return pybind11::make_tuple(toPython(pair.first), toPython(pair.second));
}

}  // namespace update_metadata_python
