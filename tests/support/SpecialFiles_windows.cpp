// The names and files of a TemporaryFolder that only POSIX systems have: a test that needs one is
// skipped.

#include "support/Skip.h"
#include "support/TemporaryFolder.h"

namespace test_support {

void TemporaryFolder::checkName(std::string_view name) {
  for (const char byte : name) {
    if (static_cast<unsigned char>(byte) < ' ' ||
        std::string_view("\"*:<>?|").find(byte) != std::string_view::npos) {
      skip("Windows has no such names");
    }
  }
}

std::u16string TemporaryFolder::makeLink(std::string_view /*name*/,
                                         std::string_view /*target*/) const {
  skip("Windows has other links");
}

std::u16string TemporaryFolder::makeFifo(std::string_view /*name*/) const {
  skip("Windows has no such pipes");
}

std::u16string TemporaryFolder::makeSocket(std::string_view /*name*/) const {
  skip("Windows has no sockets in folders");
}

}  // namespace test_support
