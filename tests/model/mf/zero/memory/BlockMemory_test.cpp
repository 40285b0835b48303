#include "mf/zero/memory/BlockMemory.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include <gtest/gtest.h>

namespace mf::zero {
namespace {

TEST(BlockMemory, KeepsPiecesOfEverySizeApart) {
  struct Piece {
    char* memory;
    std::size_t bytes;
  };
  BlockMemory memory;
  std::vector<Piece> pieces;
  for (int round = 0; round < 50; ++round) {
    for (std::size_t bytes = 1; bytes < 700000; bytes = bytes * 3 + 1) {
      pieces.push_back({static_cast<char*>(memory.allocate(bytes)), bytes});
      std::memset(pieces.back().memory, static_cast<int>(pieces.size() % 100), bytes);
    }
  }
  for (std::size_t index = 0; index < pieces.size(); ++index) {
    const Piece& piece = pieces[index];
    const char expected = static_cast<char>((index + 1) % 100);
    ASSERT_EQ(reinterpret_cast<std::uintptr_t>(piece.memory) % alignof(void*), 0u);
    ASSERT_EQ(std::vector<char>(piece.memory, piece.memory + piece.bytes),
              std::vector<char>(piece.bytes, expected));
  }
}

TEST(BlockMemory, RejectsImpossibleSizes) {
  BlockMemory memory;
  EXPECT_THROW(memory.allocate(std::numeric_limits<std::size_t>::max()), std::bad_alloc);
  EXPECT_NE(memory.allocate(1), nullptr);
}

}  // namespace
}  // namespace mf::zero
