// A string pool on a system that provides no random numbers.

#include <cerrno>
#include <cstddef>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "mf/zero/text/StringPool.h"
#include "support/SampleStrings.h"

namespace {

bool hasEntropy = true;

}  // namespace

// The linker replaces getentropy() by this function.
extern "C" {

int __real_getentropy(void* memory, std::size_t bytes);

int __wrap_getentropy(void* memory, std::size_t bytes) {
  if (hasEntropy) {
    return __real_getentropy(memory, bytes);
  }
  errno = ENOSYS;
  return -1;
}

}  // extern "C"

namespace mf::zero {
namespace {

class StringPoolWithoutEntropy : public ::testing::Test {
 protected:
  StringPoolWithoutEntropy() { hasEntropy = false; }
  ~StringPoolWithoutEntropy() override { hasEntropy = true; }
};

TEST_F(StringPoolWithoutEntropy, StoresEqualStringsOnce) {
  StringPool pool;
  for (const std::u16string& text : test_support::sampleStrings()) {
    const std::u16string copy = text;
    const InternedString& stored = pool.intern(text);
    EXPECT_EQ(stored.view(), text);
    EXPECT_EQ(&pool.intern(copy), &stored);
  }
}

TEST_F(StringPoolWithoutEntropy, HashesWithItsOwnKey) {
  const std::u16string text = u"component";
  std::set<std::size_t> hashes;
  for (int count = 0; count < 10; ++count) {
    StringPool pool;
    hashes.insert(pool.intern(text).hash);
  }
  EXPECT_EQ(hashes.size(), 10u);
}

}  // namespace
}  // namespace mf::zero
