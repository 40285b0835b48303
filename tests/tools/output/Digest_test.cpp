#include "output/Digest.h"

#include <string>

#include <gtest/gtest.h>

namespace update_metadata_tool::output {
namespace {

// The examples that the standard's publisher gives.
TEST(Sha256, IsThatOfTheStandard) {
  EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(sha256(std::string(1'000'000, 'a')),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, CountsEveryByte) {
  EXPECT_NE(sha256(std::string("a\0", 2)), sha256("a"));
}

}  // namespace
}  // namespace update_metadata_tool::output
