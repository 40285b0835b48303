#pragma once

#include <iterator>
#include <ostream>
#include <string>

#include "fl/filesystem.h"

namespace test_support {

using Stream = fl::filesystem::basic_ifstream<char>;

/// Reads as the document loader does.
inline std::string readAll(Stream& stream) {
  return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

/// What exists() and the stream say about one path.
struct Verdict {
  bool exists;
  bool opens;
};

inline bool operator==(const Verdict& left, const Verdict& right) {
  return left.exists == right.exists && left.opens == right.opens;
}

inline std::ostream& operator<<(std::ostream& out, const Verdict& verdict) {
  return out << (verdict.exists ? "exists" : "does not exist") << ", "
             << (verdict.opens ? "opens" : "does not open");
}

/// Asks exists() and the stream about `path`.
inline Verdict verdict(const std::u16string& path) {
  return {fl::filesystem::exists(path), Stream(path).is_open()};
}

inline constexpr Verdict kReadable = {true, true};
inline constexpr Verdict kThereButClosed = {true, false};
inline constexpr Verdict kAbsent = {false, false};

}  // namespace test_support
