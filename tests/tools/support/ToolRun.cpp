#include "support/ToolRun.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <stdexcept>

namespace test_support {

bool operator==(const ToolRun& left, const ToolRun& right) {
  return left.exitCode == right.exitCode && left.out == right.out && left.err == right.err;
}

std::ostream& operator<<(std::ostream& out, const ToolRun& run) {
  return out << "exit code " << run.exitCode << "\nstandard output:\n"
             << run.out << "standard error:\n"
             << run.err;
}

std::string readBytes(const std::string& path) {
  std::ifstream file(std::filesystem::u8path(path), std::ios::binary);
  if (!file) {
    throw std::runtime_error("cannot read " + path);
  }
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

}  // namespace test_support
