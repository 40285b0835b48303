// bench-growth-text: writes one input of a family, for scripts/check/command-growth.
//
//     bench-growth-text list           prints the families of texts and the size of a megabyte
//     bench-growth-text FAMILY SIZE    writes the text

#include <cstdlib>
#include <iostream>
#include <string>

#include "generate/Family.h"

int main(int argc, char** argv) {
  const std::string name = argc > 1 ? argv[1] : "";
  for (const bench::generate::Family& family : bench::generate::allFamilies()) {
    if (family.kind == bench::generate::FamilyKind::catalogue) {
      continue;
    }
    if (argc == 2 && name == "list") {
      std::cout << family.name << ' ' << family.megabyte << '\n';
    } else if (argc == 3 && name == family.name) {
      std::cout << family.make(std::strtoull(argv[2], nullptr, 10));
      return 0;
    }
  }
  if (argc == 2 && name == "list") {
    return 0;
  }
  std::cerr << "Usage: bench-growth-text list | FAMILY SIZE\n";
  return 1;
}
