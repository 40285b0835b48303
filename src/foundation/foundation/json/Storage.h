#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/json/Value.h"

namespace foundation::json::detail {

class Storage;

/// The head of a unit of memory that the nodes of many containers share. All units have one size,
/// and each begins at a multiple of it.
struct NodeUnit {
  /// The size of the whole unit, including this head.
  static constexpr std::size_t kBytes = std::size_t{16} << 10;

  alignas(16) Storage* storage;  ///< of all nodes in the unit; not counted

  /// Returns the head of the unit that `address` lies in.
  static NodeUnit* of(const void* address) noexcept {
    return reinterpret_cast<NodeUnit*>(reinterpret_cast<std::uintptr_t>(address) & ~(kBytes - 1));
  }
};

/// Keeps nodes of values in memory: the elements of arrays, the members of objects and the
/// characters of owned strings. It is reference-counted, and destroyed without a stack frame per
/// level.
///
/// The address of the first node leads to the storage: if it is a multiple of 16, the node lies in
/// a unit, whose head refers to the storage; otherwise a pointer to the storage lies directly
/// before it.
class Storage {
 public:
  Storage() noexcept = default;
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;

  /// Returns the storage of some nodes.
  static Storage& of(const void* nodes) noexcept {
    if (reinterpret_cast<std::uintptr_t>(nodes) % kUnitAlignment == 0) {
      return *NodeUnit::of(nodes)->storage;
    }
    return *static_cast<Storage* const*>(nodes)[-1];
  }

  /// Adds a reference.
  void retain() noexcept { ++references_; }

  /// Drops a reference. Dropping the last one destroys this storage and every other storage that
  /// only it keeps alive, one after the other, linked in a chain through their own memory.
  void release() noexcept;

 protected:
  static constexpr std::size_t kUnitAlignment = 16;  ///< of the first node in a unit, in bytes

  virtual ~Storage() = default;

  /// Frees this storage and adds storages whose last reference it held to the front of `pending`.
  virtual void dismantle(Storage*& pending) noexcept = 0;

  /// Drops the reference that a value holds, if any, for dismantle().
  static void drop(const Value& value, Storage*& pending) noexcept;

 private:
  std::size_t references_ = 1;
  Storage* next_ = nullptr;
};

/// Storage of the nodes of one value that was built by hand: one block of memory for both.
class NodeStorage final : public Storage {
 public:
  /// Creates storage with `bytes` of memory for nodes, and returns the address of the first byte.
  static void* create(std::size_t bytes);

  /// Makes the storage of `nodes` the owner of `count` values, starting at `first` and `stride`
  /// bytes apart.
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
