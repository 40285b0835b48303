#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "mf/zero/elements/ElementClass.h"
#include "mf/zero/elements/Model.h"
#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/elements/Placeholders.h"
#include "mf/zero/fields/RowStore.h"
#include "mf/zero/memory/BlockMemory.h"
#include "mf/zero/text/StringPool.h"

namespace mf::zero {

/// The memory that elements lie in.
///
/// Elements of one class share slabs, blocks of one size that begin at a multiple of that size, so
/// that an element finds its slab's head, and there its model and its class, by its own address.
struct Slab {
  /// Of the whole slab, this head included.
  static constexpr std::size_t kBytes = std::size_t{64} << 10;

  Model::Impl* model;                ///< of all elements in the slab; not counted
  const ElementClass* elementClass;  ///< of all elements in the slab

  /// The head of the slab that `element` lies in.
  static const Slab& of(const ElementImpl& element) noexcept {
    return *reinterpret_cast<const Slab*>(reinterpret_cast<std::uintptr_t>(&element) &
                                          ~std::uintptr_t{kBytes - 1});
  }
};

static_assert(sizeof(Slab) % kElementAlignment == 0, "elements begin right behind the head");

/// A model: its elements' memory, its names and what its placeholders stand for. Nobody outside the
/// library calls it, whatever the mark of the class that it stands in.
class __attribute__((visibility("hidden"))) Model::Impl {
 public:
  Impl() = default;
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  /// Takes a reference, for a handle or an element.
  void addRef() noexcept { ++references_; }

  /// Drops one reference, of a handle or of an element, and frees the model with the last.
  void removeRef() noexcept {
    if (--references_ == 0) {
      delete this;
    }
  }

  /// Gets memory for one element; constant time, amortised. Ends the program if the model has
  /// elements of another class with the same number: they would share a pool.
  /// \throws std::bad_alloc
  void* allocate(const ElementClass& elementClass);

  /// Takes back the memory of an element that is gone, for the next one of its class.
  void release(ElementImpl& element, const ElementClass& elementClass) noexcept;

  /// Where names are stored, each once.
  StringPool& names() noexcept { return names_; }

  /// The lists of rows that lists of elements share.
  RowStore& rows() noexcept { return rows_; }

  /// Where values are stored that are no names: as often as they are put in.
  BlockMemory& texts() noexcept { return texts_; }

  /// What placeholders stand for.
  std::unordered_map<const ElementImpl*, Placeholders::Resolver>& resolvers() noexcept {
    return resolvers_;
  }

 private:
  // Memory of elements that are gone, chained.
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

  // What is seldom needed stands outside the way of allocate().
  [[gnu::noinline]] void addPool(const ElementClass& elementClass);
  [[gnu::noinline]] void addSlab(Pool& pool, const ElementClass& elementClass);
  void addRegion();

  std::size_t references_ = 0;
  std::vector<Pool> pools_;  // by the class's number
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
