#include "mf/zero/fields/RowStore.h"

#include <cstring>
#include <limits>
#include <new>

#include "mf/zero/memory/ModelImpl.h"

namespace mf::zero {
namespace {

// The size of a list is counted in 32 bits.
constexpr std::size_t kMostRows = std::numeric_limits<std::uint32_t>::max();

}  // namespace

RowStore& RowStore::of(const Model& model) noexcept {
  return model.impl().rows();
}

bool RowStore::isEqual(const Row& row, const NewRow& other) noexcept {
  const std::u16string_view name = row.name.view();
  return row.size == other.size && row.uncompressedBytes == other.uncompressedBytes &&
         name.size() == other.name.size() &&
         std::char_traits<char16_t>::compare(name.data(), other.name.data(), name.size()) == 0;
}

RowList& RowStore::allocate(std::size_t size) {
  static_assert(sizeof(RowList) % alignof(Row) == 0);
  if (size > kMostRows || size > (std::numeric_limits<std::size_t>::max() / 2) / sizeof(Row)) {
    throw std::bad_alloc();
  }
  void* memory = memory_.allocate(sizeof(RowList) + size * sizeof(Row));
  return *new (memory) RowList{lists_, size, true};
}

void RowStore::set(RowList& rows, std::size_t index, const NewRow& row) {
  const Name name = row.name.empty() ? Name() : Name(names_.intern(row.name));
  if (index != 0 && rows[index - 1].name.view() >= name.view()) {
    rows.ascending = false;
  }
  new (const_cast<Row*>(rows.begin()) + index) Row{name, row.size, row.uncompressedBytes};
}

}  // namespace mf::zero
