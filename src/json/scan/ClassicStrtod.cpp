#include "json/scan/ClassicStrtod.h"

#include <clocale>
#include <cstdlib>
#include <new>
#include <string>

namespace foundation::json::detail {
namespace {

#ifdef _WIN32

using Locale = _locale_t;

Locale makeClassicLocale() noexcept {
  return ::_create_locale(LC_ALL, "C");
}

double convert(const char* number, Locale locale) noexcept {
  return ::_strtod_l(number, nullptr, locale);
}

#else

using Locale = locale_t;

Locale makeClassicLocale() noexcept {
  return ::newlocale(LC_ALL_MASK, "C", nullptr);
}

double convert(const char* number, Locale locale) noexcept {
  return ::strtod_l(number, nullptr, locale);
}

#endif

Locale classicLocale() {
  static const Locale locale = makeClassicLocale();
  if (locale == nullptr) {
    throw std::bad_alloc();
  }
  return locale;
}

}  // namespace

double classicStrtod(std::string_view number) {
  return convert(std::string(number).c_str(), classicLocale());
}

}  // namespace foundation::json::detail
