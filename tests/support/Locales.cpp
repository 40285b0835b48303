#include "support/Locales.h"

#include <clocale>
#include <cstdlib>
#include <locale>
#include <map>
#include <stdexcept>

#include "support/TemporaryFolder.h"

namespace test_support {
namespace {

// The folders with locales that were made, each in a folder of its own: the C library remembers of
// every folder which locales it lacked.
std::map<std::string, TemporaryFolder>& madeLocales() {
  static std::map<std::string, TemporaryFolder> folders;
  return folders;
}

// Makes a locale "language_COUNTRY.UTF-8". Whether that worked is seen when it is used.
void makeLocale(const std::string& name) {
  const TemporaryFolder& folder = madeLocales()[name];
  const std::string command = "localedef -i " + name.substr(0, name.find('.')) + " -f UTF-8 '" +
                              folder.nativePath(name) + "' 2>/dev/null";
  static_cast<void>(std::system(command.c_str()));
}

bool setLocale(const std::string& name) {
  if (madeLocales().count(name) == 0) {
    if (std::setlocale(LC_ALL, name.c_str()) != nullptr) {
      return true;
    }
    makeLocale(name);
  }
  ::setenv("LOCPATH", madeLocales()[name].nativePath().c_str(), 1);
  return std::setlocale(LC_ALL, name.c_str()) != nullptr;
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
    throw std::runtime_error("no locale " + name);
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
