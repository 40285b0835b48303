#include "support/GuardedText.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <new>
#include <stdexcept>

namespace test_support {
namespace {

std::size_t pageSize() {
  static const auto size = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  return size;
}

std::size_t accessibleSize() {
  return (GuardedText::kCapacity + pageSize() - 1) / pageSize() * pageSize();
}

// The text area with an inaccessible page on each side.
std::size_t wholeSize() {
  return accessibleSize() + 2 * pageSize();
}

}  // namespace

GuardedText::GuardedText() {
  void* const memory = ::mmap(nullptr, wholeSize(), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) {
    throw std::bad_alloc();
  }
  memory_ = static_cast<char*>(memory);
  if (::mprotect(memory_ + pageSize(), accessibleSize(), PROT_READ | PROT_WRITE) != 0) {
    ::munmap(memory_, wholeSize());
    throw std::bad_alloc();
  }
}

GuardedText::~GuardedText() {
  ::munmap(memory_, wholeSize());
}

std::string_view GuardedText::place(std::string_view text) {
  if (text.size() > kCapacity) {
    throw std::length_error("GuardedText");
  }
  char* const begin = memory_ + pageSize() + accessibleSize() - text.size();
  if (!text.empty()) {
    std::memcpy(begin, text.data(), text.size());
  }
  return {begin, text.size()};
}

}  // namespace test_support
