// Opens a module that uses the library, as an application opens a plug-in, and lets it check what
// crosses the boundary. Then opens and closes the module and its dependencies many times.
//
//   boundary MODULE LIBRARY

#include <dlfcn.h>
#include <malloc.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include "support/Sanitizers.h"

namespace {

using test_support::kHasSanitizer;

// A sanitizer takes ten times as long, and the data it keeps for its reports grows.
constexpr int kRounds = kHasSanitizer ? 100 : 1000;
constexpr int kWarmUp = 100;
// What is lost in each round adds up to more.
constexpr std::size_t kHeapNoise = std::size_t{4} << 10;
constexpr std::size_t kResidentNoise = std::size_t{512} << 10;

[[noreturn]] void fail(const std::string& what) {
  std::cerr << "boundary: " << what << '\n';
  std::exit(1);
}

/// Opens the module in its own scope, runs its checks and closes it.
void openCheckClose(const char* module, bool exhaust) {
  void* const handle = ::dlopen(module, RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    fail(::dlerror());
  }
  using Check = int(bool, char*, std::size_t);
  auto* const check = reinterpret_cast<Check*>(::dlsym(handle, "checkBoundary"));
  if (check == nullptr) {
    fail(::dlerror());
  }
  char report[4096];
  if (check(exhaust, report, sizeof report) == 0) {
    fail(report);
  }
  ::dlclose(handle);
}

/// Heap bytes in use.
std::size_t heapBytes() {
  return ::mallinfo2().uordblks;
}

/// Resident memory of the process in bytes.
std::size_t residentBytes() {
  std::size_t all = 0;
  std::size_t resident = 0;
  std::ifstream("/proc/self/statm") >> all >> resident;
  return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    fail("usage: boundary MODULE LIBRARY");
  }
  std::size_t heapBefore = 0;
  std::size_t residentBefore = 0;
  for (int round = 0; round < kRounds; ++round) {
    if (round == kWarmUp) {
      residentBefore = residentBytes();  // leaves what it frees in the heap's cache
      heapBefore = heapBytes();
    }
    // A sanitizer needs more memory than the limit would allow.
    openCheckClose(arguments[1], round == 0 && !kHasSanitizer);
    if (!kHasSanitizer && ::dlopen(arguments[2], RTLD_NOW | RTLD_NOLOAD) != nullptr) {
      fail("the library stays loaded after its last user has gone");
    }
  }
  const std::size_t heapAfter = heapBytes();
  const std::size_t residentAfter = residentBytes();
  std::cout << "boundary: opened and closed " << kRounds << " times; heap " << heapBefore << " -> "
            << heapAfter << " bytes, resident " << residentBefore << " -> " << residentAfter
            << " bytes\n";
  if (!kHasSanitizer && heapAfter > heapBefore + kHeapNoise) {
    fail("the heap grows");
  }
  if (!kHasSanitizer && residentAfter > residentBefore + kResidentNoise) {
    fail("the process grows");
  }
  return 0;
}
