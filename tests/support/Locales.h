#pragma once

#include <locale>
#include <string>
#include <vector>

namespace test_support {

/// The locales under which the library is tried: plain ones, one with a decimal comma and one with
/// letters of its own.
inline const std::vector<const char*>& localesOfTests() {
  static const std::vector<const char*> names = {"C", "C.UTF-8", "de_DE.UTF-8", "tr_TR.UTF-8"};
  return names;
}

/// Puts the whole program, the C library and the streams, under a locale for the time of its life.
/// Those that the system does not offer are made with the tests, where it has their sources.
class LocaleScope {
 public:
  /// \throws std::runtime_error  the locale is not there
  explicit LocaleScope(const std::string& name);
  LocaleScope(const LocaleScope&) = delete;
  LocaleScope& operator=(const LocaleScope&) = delete;
  ~LocaleScope();

 private:
  std::string before_;
  std::locale streamsBefore_;
};

/// Puts all streams under a locale whose files are not what their bytes are: every '1' is read as a
/// '2'. For the time of its life.
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
