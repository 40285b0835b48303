#include "support/Locales.h"

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <locale>
#include <stdexcept>

namespace test_support {
namespace {

#ifdef _WIN32

bool findMadeLocales() {
  return false;
}

#else

// Lets the C library find the locales that the build makes, if it makes any.
bool findMadeLocales() {
  constexpr const char* kMadeLocales = UMP_LOCALES;
  return *kMadeLocales != '\0' && ::setenv("LOCPATH", kMadeLocales, 1) == 0;
}

#endif

bool setLocale(const std::string& name) {
  return std::setlocale(LC_ALL, name.c_str()) != nullptr ||
         (findMadeLocales() && std::setlocale(LC_ALL, name.c_str()) != nullptr);
}

// Used by streams where the C library uses a decimal comma. Not std::locale(name): creating one
// from our own folder leaks memory of the C library.
struct Commas : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

struct OnesAsTwos : std::codecvt<char, char, std::mbstate_t> {
  bool do_always_noconv() const noexcept override { return false; }
  result do_in(std::mbstate_t&, const char* from, const char* fromEnd, const char*& fromNext,
               char* to, char* toEnd, char*& toNext) const override {
    const auto count = std::min(fromEnd - from, toEnd - to);
    fromNext = from + count;
    toNext = std::replace_copy(from, fromNext, to, '1', '2');
    return fromNext == fromEnd ? ok : partial;
  }
};

}  // namespace

const std::vector<const char*>& localesOfTests() {
#ifdef _WIN32
  static const std::vector<const char*> names = {"C", "German_Germany", "Turkish_Turkey"};
#else
  static const std::vector<const char*> names = {"C", "C.UTF-8", "de_DE.UTF-8", "tr_TR.UTF-8"};
#endif
  return names;
}

LocaleScope::LocaleScope(const std::string& name) : before_(std::setlocale(LC_ALL, nullptr)) {
  if (!setLocale(name)) {
    throw std::runtime_error("missing locale: " + name +
                             "; the package locales has what it is made of");
  }
  if (*std::localeconv()->decimal_point == ',') {
    std::locale::global(std::locale(std::locale::classic(), new Commas));
  }
}

LocaleScope::~LocaleScope() {
  std::locale::global(streamsBefore_);
  std::setlocale(LC_ALL, before_.c_str());
}

ConvertingLocaleScope::ConvertingLocaleScope()
    : before_(std::locale::global(std::locale(std::locale::classic(), new OnesAsTwos))) {}

ConvertingLocaleScope::~ConvertingLocaleScope() {
  std::locale::global(before_);
}

}  // namespace test_support
