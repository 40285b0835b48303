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

void RowStore::makeElements(const AbstractOwnedCollection& list) {
  const RowList& rows = *list.rows();
  ElementImpl& owner = list.owner();
  const ElementClass& elementClass = *list.property().elementClass;
  list.clear();
  try {
    for (std::size_t index = 0; index != rows.size; ++index) {
      void* memory = allocateElement(owner.model(), elementClass);
      const ModelElement element(elementClass.makeFromRow(memory, rows, index));
      list.makeRoomFor(*element.impl_, elementClass.implSize);
      element.impl_->attachTo(owner, list.propertyNumber_);
      list.push(*element.impl_);
    }
  } catch (...) {
    list.dropReferences();
    list.clear();
    list.setRows(rows);
    throw;
  }
}

bool RowStore::isEqual(const PackageRow& row, const NewPackage& other) noexcept {
  const std::u16string_view name = row.name.view();
  return row.size == other.size && row.uncompressedBytes == other.uncompressedBytes &&
         name.size() == other.name.size() &&
         // The standard library compares unit by unit, which takes several times as long.
         (name.empty() ||
          std::memcmp(name.data(), other.name.data(), name.size() * sizeof(char16_t)) == 0);
}

RowList& RowStore::allocate(std::size_t size, std::size_t rowBytes) {
  if (size > kMostRows || size > (std::numeric_limits<std::size_t>::max() / 2) / rowBytes) {
    throw std::bad_alloc();
  }
  void* memory = memory_.allocate(sizeof(RowList) + size * rowBytes);
  return *new (memory) RowList{size, 0, true, 0};
}

void RowStore::setPackage(RowList& rows, std::size_t index, const NewPackage& package) {
  const Name name = nameOf(package.name);
  if (index != 0 && rows.at<PackageRow>(index - 1).name.view() >= name.view()) {
    rows.ascending = false;
  }
  new (placeOf<PackageRow>(rows, index)) PackageRow{name, package.size, package.uncompressedBytes};
}

}  // namespace mf::zero
