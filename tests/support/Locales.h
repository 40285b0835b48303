#pragma once

#include <locale>
#include <string>
#include <vector>

namespace test_support {

/// The locales that the library is tested under: plain ones, one with a decimal comma and one with
/// its own letters.
const std::vector<const char*>& localesOfTests();

/// Switches the whole program, the C library and the streams, to a locale while it lives. The build
/// makes locales that the system lacks if it has their sources.
class LocaleScope {
 public:
  /// \throws std::runtime_error  the locale is missing
  explicit LocaleScope(const std::string& name);
  LocaleScope(const LocaleScope&) = delete;
  LocaleScope& operator=(const LocaleScope&) = delete;
  ~LocaleScope();

 private:
  std::string before_;
  std::locale streamsBefore_;
};

/// While it lives, switches all streams to a locale that converts the bytes of files: every '1' is
/// read as '2'.
class ConvertingLocaleScope {
 public:
  ConvertingLocaleScope();
  ConvertingLocaleScope(const ConvertingLocaleScope&) = delete;
  ConvertingLocaleScope& operator=(const ConvertingLocaleScope&) = delete;
  ~ConvertingLocaleScope();

 private:
  std::locale before_;
};

}  // namespace test_support
