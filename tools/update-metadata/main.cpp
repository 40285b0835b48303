#include <csignal>
#include <ios>
#include <iostream>

#include "program/Run.h"

int main(int argc, char** argv) {
  // A closed pipe or a file at its size limit must be a failed write with a message, not a signal
  // that ends the program silently.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  std::ios_base::sync_with_stdio(false);
  std::cout.exceptions(std::ios_base::badbit);
  return update_metadata_tool::program::run(argc, argv);
}
