#include "peers/Probe.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace bench::peers {
namespace {

constexpr std::int64_t kBytesPerKilobyte = 1024;

// The number after the first word `name`, which is in kilobytes, as bytes.
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
  throw std::runtime_error(std::string(path) + " does not tell " + name);
}

}  // namespace

std::int64_t residentBytes() {
  // Counted page by page: the quick figures of other files may lag behind by some.
  return kilobytesOf("/proc/self/smaps_rollup", "Rss:");
}

std::int64_t peakResidentBytes() {
  return kilobytesOf("/proc/self/status", "VmHWM:");
}

void resetPeak() {
  std::ofstream("/proc/self/clear_refs") << '5' << std::flush;
}

}  // namespace bench::peers
