// Prints the version of the library that it runs with.

#include <iostream>

#include "install/update_metadata_parser/Version.h"

int main() {
  std::cout << "update_metadata_parser " << install::update_metadata_parser::version() << '\n';
}
