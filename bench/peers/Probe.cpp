#include "peers/Probe.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace bench::peers {
namespace {

constexpr std::int64_t kBytesPerKilobyte = 1024;

// Returns the number after the word `name`, which is in kilobytes, in bytes.
std::int64_t kilobytesOf(const char* path, const std::string& name) {
  std::ifstream list(path);
  std::string word;
  while (list >> word) {
    if (word == name) {
      std::int64_t kilobytes = 0;
      list >> kilobytes;
      return kilobytes * kBytesPerKilobyte;
    }
  }
  throw std::runtime_error(std::string(path) + " does not contain " + name);
}

}  // namespace

std::int64_t residentBytes() {
  // Counted page by page: the cached figures in other files may lag behind.
  return kilobytesOf("/proc/self/smaps_rollup", "Rss:");
}

std::int64_t peakResidentBytes() {
  return kilobytesOf("/proc/self/status", "VmHWM:");
}

void resetPeak() {
  std::ofstream("/proc/self/clear_refs") << '5' << std::flush;
}

}  // namespace bench::peers
