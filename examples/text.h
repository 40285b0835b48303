#pragma once

#include <filesystem>
#include <string>

// The library uses UTF-16. On Linux std::filesystem::path converts between it and UTF-8 in both
// directions; an application will have its own conversion.

inline std::string toUtf8(const std::u16string& text) {
  return std::filesystem::path(text).string();
}

inline std::u16string toUtf16(const std::string& text) {
  return std::filesystem::path(text).u16string();
}
