#include "mf/zero/memory/ModelImpl.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "foundation/core/large_pages.h"
#include "mf/zero/memory/FreeMemory.h"

namespace mf::zero {
namespace {

// A region is one block from the system, cut into slabs. Its pages cost nothing until they are
// used, so a small model stays small. Each region is twice as large as the one before, up to a size
// that every allocator maps separately.
constexpr std::size_t kSlabsOfFirstRegion = 16;
constexpr std::size_t kLargestRegion = std::size_t{32} << 20;

// The distance of `memory` from the next multiple of `alignment`, a power of two.
std::size_t toMultiple(const char* memory, std::size_t alignment) noexcept {
  return (alignment - (reinterpret_cast<std::uintptr_t>(memory) & (alignment - 1))) &
         (alignment - 1);
}

}  // namespace

void* Model::Impl::allocate(const ElementClass& elementClass) {
  if (elementClass.number >= pools_.size() ||
      pools_[elementClass.number].elementClass != &elementClass) {
    addPool(elementClass);
  }
  Pool& pool = pools_[elementClass.number];
  if (pool.free == nullptr &&
      static_cast<std::size_t>(pool.end - pool.position) < elementClass.implSize) {
    addSlab(pool, elementClass);
  }
  void* memory = pool.free;
  if (memory != nullptr) {
    markUsed(memory, elementClass.implSize);
    pool.free = pool.free->next;
  } else {
    memory = pool.position;
    pool.position += elementClass.implSize;
    markUsed(memory, elementClass.implSize);
  }
  addRef();
  return memory;
}

void Model::Impl::release(ElementImpl& element, const ElementClass& elementClass) noexcept {
  Pool& pool = pools_[elementClass.number];
  pool.free = new (static_cast<void*>(&element)) FreeElement{pool.free};
  markFree(&element, elementClass.implSize);
  removeRef();
}

void Model::Impl::addPool(const ElementClass& elementClass) {
  if (elementClass.number >= pools_.size()) {
    pools_.resize(elementClass.number + 1);
  }
  Pool& pool = pools_[elementClass.number];
  if (pool.elementClass != nullptr) {
    std::terminate();
  }
  pool.elementClass = &elementClass;
}

void Model::Impl::addSlab(Pool& pool, const ElementClass& elementClass) {
  if (slabsLeft_ == 0) {
    addRegion();
  }
  char* slab = std::exchange(nextSlab_, nextSlab_ + Slab::kBytes);
  --slabsLeft_;
  new (slab) Slab{this, &elementClass};
  pool.position = slab + sizeof(Slab);
  pool.end = slab + Slab::kBytes;
  markFree(pool.position, Slab::kBytes - sizeof(Slab));
}

void Model::Impl::addRegion() {
  const std::size_t slabs = std::max(slabsOfNextRegion_, kSlabsOfFirstRegion);
  const std::size_t bytes = slabs * Slab::kBytes;
  const bool large = bytes >= foundation::core::kLargePagesFrom;
  const std::size_t alignment = large ? foundation::core::kLargePage : Slab::kBytes;
  std::unique_ptr<char[]> memory(new char[bytes + alignment]);
  regions_.push_back(std::move(memory));
  char* region = regions_.back().get();
  nextSlab_ = region + toMultiple(region, alignment);
  slabsLeft_ = slabs;
  slabsOfNextRegion_ = std::min(slabs * 2, kLargestRegion / Slab::kBytes);
  if (large) {
    foundation::core::adviseLargePages(nextSlab_, bytes);
  }
}

}  // namespace mf::zero
