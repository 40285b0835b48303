#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "mf/zero/Name.h"

namespace mf::zero {

/// Stores each UTF-16 string once, however often it is put in, and keeps it until the pool goes.
class StringPool {
 public:
  StringPool() noexcept = default;
  StringPool(const StringPool&) = delete;
  StringPool& operator=(const StringPool&) = delete;

  /// Returns the one stored string equal to `text`.
  ///
  /// Constant expected time but for reading the text. If it throws std::bad_alloc, the pool has not
  /// changed.
  const InternedString& intern(std::u16string_view text);

 private:
  void growTable();
  char* allocate(std::size_t bytes);
  char* addBlock(std::size_t bytes);

  std::vector<const InternedString*> table_;  // open addressing, a power of two of places
  std::size_t used_ = 0;
  std::vector<std::unique_ptr<char[]>> blocks_;
  char* position_ = nullptr;  // in the newest small block
  std::size_t left_ = 0;
  std::size_t nextBlock_ = 0;
};

}  // namespace mf::zero
