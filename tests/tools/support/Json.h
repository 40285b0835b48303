#pragma once

#include <iosfwd>
#include <string>

#include <nlohmann/json.hpp>

namespace nlohmann {

/// Prints a value that a test expected, or got.
void PrintTo(const ordered_json& json, std::ostream* out);

}  // namespace nlohmann

namespace test_support {

/// JSON that the command wrote, as an independent library reads it.
using Json = nlohmann::ordered_json;

/// Reads a text. Throws what that library throws if it is not JSON.
Json parseJson(const std::string& text);

}  // namespace test_support
