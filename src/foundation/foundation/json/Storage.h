#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/json/Value.h"

namespace foundation::json::detail {

class Storage;

/// The head of a unit of memory that many containers' nodes share: memory of one size that begins
/// at a multiple of that size.
struct NodeUnit {
  /// Of the whole unit, this head included.
  static constexpr std::size_t kBytes = std::size_t{16} << 10;

  alignas(16) Storage* storage;  ///< of all nodes in the unit; not counted

  /// The head of the unit that `address` lies in.
  static NodeUnit* of(const void* address) noexcept {
    return reinterpret_cast<NodeUnit*>(reinterpret_cast<std::uintptr_t>(address) & ~(kBytes - 1));
  }
};

/// What keeps nodes of values, the elements of arrays, the members of objects and the characters of
/// owned strings, in memory: counted, and destroyed without a stack per level.
///
/// Nodes lead to it by the address of the first one: if that is a multiple of 16, it lies in a
/// unit, whose head tells the storage; otherwise a pointer to the storage lies directly before it.
class Storage {
 public:
  Storage() noexcept = default;
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;

  /// The storage of some nodes.
  static Storage& of(const void* nodes) noexcept {
    if (reinterpret_cast<std::uintptr_t>(nodes) % kUnitAlignment == 0) {
      return *NodeUnit::of(nodes)->storage;
    }
    return *static_cast<Storage* const*>(nodes)[-1];
  }

  /// Takes one more reference.
  void retain() noexcept { ++references_; }

  /// Drops a reference. The last one destroys this storage, and every other one that is held by it
  /// alone: one after the other, chained through themselves.
  void release() noexcept;

 protected:
  static constexpr std::size_t kUnitAlignment = 16;  ///< of the first node in a unit, in bytes

  virtual ~Storage() = default;

  /// Frees this storage; storages whose last reference goes with it are chained before `pending`.
  virtual void dismantle(Storage*& pending) noexcept = 0;

  /// Drops the reference that a value holds, if any, for dismantle().
  static void drop(const Value& value, Storage*& pending) noexcept;

 private:
  std::size_t references_ = 1;
  Storage* next_ = nullptr;
};

/// Storage of the nodes of one value that was made by hand: one block of memory for both.
class NodeStorage final : public Storage {
 public:
  /// Makes storage with `bytes` of memory for nodes, and returns the first byte.
  static void* create(std::size_t bytes);

  /// Tells the storage of `nodes` that it owns `count` values from `first` on, `stride` bytes
  /// apart.
  static void own(const void* nodes, const Value* first, std::size_t count,
                  std::size_t stride) noexcept;

 private:
  NodeStorage() noexcept = default;

  void dismantle(Storage*& pending) noexcept override;

  const Value* first_ = nullptr;
  std::size_t count_ = 0;
  std::size_t stride_ = 0;
};

}  // namespace foundation::json::detail
