#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/core/compiler.h"
#include "foundation/core/export.h"
#include "mf/zero/elements/ElementClass.h"
#include "mf/zero/elements/Model.h"
#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/elements/Placeholders.h"
#include "mf/zero/fields/RowStore.h"
#include "mf/zero/memory/BlockMemory.h"
#include "mf/zero/text/StringPool.h"

namespace mf::zero {

/// A block of the memory for elements.
///
/// Elements of one class share slabs. All slabs have one size and begin at a multiple of it, so an
/// element finds the head of its slab, and there its model and its class, by its own address.
struct Slab {
  /// The size of the whole slab, including this head.
  static constexpr std::size_t kBytes = std::size_t{64} << 10;

  Model::Impl* model;                ///< of all elements in the slab; not counted
  const ElementClass* elementClass;  ///< of all elements in the slab

  /// Returns the head of the slab that `element` lies in.
  static const Slab& of(const ElementImpl& element) noexcept {
    return *reinterpret_cast<const Slab*>(reinterpret_cast<std::uintptr_t>(&element) &
                                          ~std::uintptr_t{kBytes - 1});
  }
};

static_assert(sizeof(Slab) % kElementAlignment == 0, "elements begin right after the head");

/// A model: the memory of its elements, its names and the resolvers of its placeholders. Hidden,
/// because code outside the library never calls it, although the class that contains it is
/// exported.
class FOUNDATION_HIDDEN Model::Impl {
 public:
  Impl() = default;
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  /// Adds a reference, for a handle or an element.
  void addRef() noexcept { ++references_; }

  /// Drops a reference of a handle or an element; with the last one the model is freed.
  void removeRef() noexcept {
    if (--references_ == 0) {
      delete this;
    }
  }

  /// Allocates memory for one element; amortized constant time. Ends the program if the model has
  /// elements of another class with the same number, because they would share a pool.
  /// \throws std::bad_alloc
  void* allocate(const ElementClass& elementClass);

  /// Takes back the memory of a destroyed element, for the next one of its class.
  void release(ElementImpl& element, const ElementClass& elementClass) noexcept;

  /// The names, each stored once.
  StringPool& names() noexcept { return names_; }

  /// The lists of rows that lists of elements refer to.
  RowStore& rows() noexcept { return rows_; }

  /// The texts that are not names, stored as often as they are added.
  BlockMemory& texts() noexcept { return texts_; }

  /// The resolvers of placeholders.
  std::unordered_map<const ElementImpl*, Placeholders::Resolver>& resolvers() noexcept {
    return resolvers_;
  }

 private:
  // Memory of destroyed elements, linked in a chain.
  struct FreeElement {
    FreeElement* next;
  };

  struct Pool {
    const ElementClass* elementClass = nullptr;  // of all its elements; null for an unused number
    FreeElement* free = nullptr;
    char* position = nullptr;  // in the newest slab
    char* end = nullptr;
  };

  ~Impl() = default;

  // A rare path, separate from allocate().
  FOUNDATION_NOINLINE void addPool(const ElementClass& elementClass);
  FOUNDATION_NOINLINE void addSlab(Pool& pool, const ElementClass& elementClass);
  void addRegion();

  std::size_t references_ = 0;
  std::vector<Pool> pools_;  // indexed by the class's number
  std::vector<std::unique_ptr<char[]>> regions_;
  std::size_t slabsOfNextRegion_ = 0;
  char* nextSlab_ = nullptr;  // in the newest region
  std::size_t slabsLeft_ = 0;
  StringPool names_;
  RowStore rows_{names_};
  BlockMemory texts_;
  std::unordered_map<const ElementImpl*, Placeholders::Resolver> resolvers_;
};

}  // namespace mf::zero
