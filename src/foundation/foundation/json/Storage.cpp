#include "foundation/json/Storage.h"

#include <new>

namespace foundation::json::detail {

void Storage::release() noexcept {
  if (--references_ != 0) {
    return;
  }
  Storage* pending = this;
  while (pending != nullptr) {
    Storage* const storage = pending;
    pending = storage->next_;
    storage->dismantle(pending);
  }
}

void Storage::drop(const Value& value, Storage*& pending) noexcept {
  if (!value.rep_.owns()) {
    return;
  }
  Storage& storage = of(value.rep_.content.elements);
  if (--storage.references_ == 0) {
    storage.next_ = pending;
    pending = &storage;
  }
}

void* NodeStorage::create(std::size_t bytes) {
  // The nodes begin halfway between two multiples of the units' alignment, right after the link.
  constexpr std::size_t kHalf = kUnitAlignment / 2;
  static_assert(alignof(Value) <= kHalf && alignof(Member) <= kHalf);
  constexpr std::size_t kHead = sizeof(NodeStorage) + sizeof(Storage*);
  char* const memory = static_cast<char*>(::operator new(kHead + kUnitAlignment - 1 + bytes));
  auto* const storage = new (memory) NodeStorage;
  const std::uintptr_t least = reinterpret_cast<std::uintptr_t>(memory + kHead);
  char* const nodes = memory + kHead + (kHalf - least) % kUnitAlignment;
  new (nodes - sizeof(Storage*)) Storage*(storage);
  return nodes;
}

void NodeStorage::own(const void* nodes, const Value* first, std::size_t count,
                      std::size_t stride) noexcept {
  auto& storage = static_cast<NodeStorage&>(of(nodes));
  storage.first_ = first;
  storage.count_ = count;
  storage.stride_ = stride;
}

void NodeStorage::dismantle(Storage*& pending) noexcept {
  const char* position = reinterpret_cast<const char*>(first_);
  for (std::size_t i = 0; i != count_; ++i, position += stride_) {
    drop(*reinterpret_cast<const Value*>(position), pending);
  }
  this->~NodeStorage();
  ::operator delete(static_cast<void*>(this));
}

}  // namespace foundation::json::detail
