#include "support/GuardedText.h"

#include <windows.h>

#include <cstring>
#include <new>
#include <stdexcept>

namespace test_support {
namespace {

// Of every processor that Windows runs on.
constexpr std::size_t kPage = 4096;
static_assert(GuardedText::kCapacity == kPage);

}  // namespace

GuardedText::GuardedText()
    : memory_(static_cast<char*>(::VirtualAlloc(nullptr, 3 * kPage, MEM_RESERVE, PAGE_NOACCESS))) {
  // Only the page in the middle can be used.
  if (memory_ == nullptr ||
      ::VirtualAlloc(memory_ + kPage, kPage, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
    throw std::bad_alloc();
  }
}

GuardedText::~GuardedText() {
  ::VirtualFree(memory_, 0, MEM_RELEASE);
}

std::string_view GuardedText::place(std::string_view text) {
  if (text.size() > kCapacity) {
    throw std::length_error("GuardedText");
  }
  char* const begin = memory_ + 2 * kPage - text.size();
  if (!text.empty()) {
    std::memcpy(begin, text.data(), text.size());
  }
  return {begin, text.size()};
}

}  // namespace test_support
