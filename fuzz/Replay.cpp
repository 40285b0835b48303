// An ordinary main for a fuzzer: tries the named files and all files in the named folders. The one
// named after "--if-there" may be missing. A fuzzer with its own mutator also tries a fixed series
// of mutations of each file.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Fuzzer.h"

extern "C" {
[[gnu::weak]] std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                                  std::size_t maxSize, unsigned seed);
[[gnu::weak]] std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first,
                                                    std::size_t firstSize,
                                                    const std::uint8_t* second,
                                                    std::size_t secondSize, std::uint8_t* out,
                                                    std::size_t maxSize, unsigned seed);
}

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

constexpr unsigned kChangesOfAFile = 100;
constexpr std::size_t kRoomForChanges = 4096;

std::vector<fs::path> filesIn(const fs::path& path) {
  std::vector<fs::path> files;
  if (!fs::is_directory(path)) {
    files.push_back(path);
    return files;
  }
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::vector<fs::path> filesToTry(int argc, char** argv) {
  std::vector<fs::path> files;
  bool mayBeMissing = false;
  for (int i = 1; i < argc; ++i) {
    if (std::string_view(argv[i]) == "--if-there") {
      mayBeMissing = true;
      continue;
    }
    if (!mayBeMissing || fs::exists(argv[i])) {
      const std::vector<fs::path> found = filesIn(argv[i]);
      files.insert(files.end(), found.begin(), found.end());
    }
    mayBeMissing = false;
  }
  return files;
}

Bytes readWhole(const fs::path& path) {
  std::ifstream stream(path, std::ios_base::binary);
  if (!stream.is_open()) {
    throw std::runtime_error("cannot be opened");
  }
  return Bytes(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

void tryInput(const Bytes& bytes) {
  // A block of exactly its size, so that sanitizers notice every read beyond it.
  const auto block = std::make_unique<std::uint8_t[]>(bytes.size());
  std::copy(bytes.begin(), bytes.end(), block.get());
  LLVMFuzzerTestOneInput(block.get(), bytes.size());
}

// Mutates a file repeatedly, and combines it with the previous one.
void tryChanges(const Bytes& bytes, const Bytes& former) {
  Bytes changed = bytes;
  changed.resize(std::max(kRoomForChanges, bytes.size()));
  std::size_t size = bytes.size();
  for (unsigned seed = 0; seed < kChangesOfAFile; ++seed) {
    size = LLVMFuzzerCustomMutator(changed.data(), size, changed.size(), seed);
    tryInput(Bytes(changed.begin(), changed.begin() + static_cast<std::ptrdiff_t>(size)));
    Bytes joined(kRoomForChanges);
    joined.resize(LLVMFuzzerCustomCrossOver(changed.data(), size, former.data(), former.size(),
                                            joined.data(), joined.size(), seed));
    tryInput(joined);
  }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize) {
  static std::minstd_rand random;
  if (size < maxSize && random() % 2 == 0) {
    const std::size_t place = random() % (size + 1);
    std::memmove(data + place + 1, data + place, size - place);
    data[place] = static_cast<std::uint8_t>(random());
    return size + 1;
  }
  if (size != 0) {
    data[random() % size] = static_cast<std::uint8_t>(random());
  }
  return size;
}

int main(int argc, char** argv) {
  std::size_t count = 0;
  std::string current;
  try {
    Bytes former;
    for (const fs::path& file : filesToTry(argc, argv)) {
      current = file.string();
      // Printed before it is tried, because a failure ends the program.
      std::fprintf(stderr, "%s\n", current.c_str());
      const Bytes bytes = readWhole(file);
      tryInput(bytes);
      if (LLVMFuzzerCustomMutator != nullptr && bytes.size() <= kRoomForChanges) {
        tryChanges(bytes, former);
        former = bytes;
      }
      ++count;
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s: %s\n", current.c_str(), failure.what());
    return 1;
  }
  std::printf("%zu files\n", count);
  return count != 0 ? 0 : 1;
}
