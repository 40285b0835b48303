#include "json/scan/ClassicStrtod.h"

#include <clocale>
#include <cstdlib>
#include <new>
#include <string>

namespace foundation::json::detail {
namespace {

#ifdef _WIN32

using Locale = _locale_t;

Locale newClassicLocale() noexcept {
  return ::_create_locale(LC_ALL, "C");
}

double convert(const char* number, Locale locale) noexcept {
  return ::_strtod_l(number, nullptr, locale);
}

#else

using Locale = locale_t;

Locale newClassicLocale() noexcept {
  return ::newlocale(LC_ALL_MASK, "C", nullptr);
}

double convert(const char* number, Locale locale) noexcept {
  return ::strtod_l(number, nullptr, locale);
}

#endif

Locale makeClassicLocale() {
  const Locale locale = newClassicLocale();
  if (locale == nullptr) {
    throw std::bad_alloc();
  }
  return locale;
}

}  // namespace

double classicStrtod(std::string_view number) {
  static const Locale locale = makeClassicLocale();
  return convert(std::string(number).c_str(), locale);
}

}  // namespace foundation::json::detail
