#pragma once

#include <cxxabi.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <typeinfo>

#include "foundation/json/Value.h"

namespace test_support {

/// Describes what an action throws: its exact type, ": " and its text up to the first NUL. Returns
/// "an exception of another kind" for what is not a std::exception, and "nothing" if nothing is
/// thrown.
template <class Action>
std::string failureOf(Action&& action) {
  try {
    action();
  } catch (const std::exception& failure) {
    const std::unique_ptr<char, decltype(&std::free)> type(
        abi::__cxa_demangle(typeid(failure).name(), nullptr, nullptr, nullptr), &std::free);
    return std::string(type.get()) + ": " + failure.what();
  } catch (...) {
    return "an exception of another kind";
  }
  return "nothing";
}

/// The failure for a member that is absent or of another kind, in the form of failureOf().
inline std::string invalidData(const std::string& member) {
  return "std::runtime_error: Invalid data provided for '" + member + "'";
}

/// The failure of a conversion between two kinds, in the form of failureOf().
inline std::string invalidConversion(const std::string& from, const std::string& to) {
  return "std::runtime_error: invalid conversion: " + from + " to " + to;
}

template <class From, class To>
std::string invalidConversion() {
  return invalidConversion(foundation::json::traits<From>::name,
                           foundation::json::traits<To>::name);
}

}  // namespace test_support
