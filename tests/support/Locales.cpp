#include "support/Locales.h"

#include <clocale>
#include <cstdlib>
#include <locale>
#include <stdexcept>

namespace test_support {
namespace {

bool setLocale(const std::string& name) {
  if (std::setlocale(LC_ALL, name.c_str()) != nullptr) {
    return true;
  }
  // Where the build has made locales of its own.
  constexpr const char* kMadeLocales = UMP_LOCALES;
  return *kMadeLocales != '\0' && ::setenv("LOCPATH", kMadeLocales, 1) == 0 &&
         std::setlocale(LC_ALL, name.c_str()) != nullptr;
}

// What streams use where the C library uses a decimal comma. Not std::locale(name): making one from
// a folder of our own leaks memory of the C library.
struct Commas : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

}  // namespace

LocaleScope::LocaleScope(const std::string& name) : before_(std::setlocale(LC_ALL, nullptr)) {
  if (!setLocale(name)) {
    throw std::runtime_error("there is no locale " + name +
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

}  // namespace test_support
