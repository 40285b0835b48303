#pragma once

#include <cstddef>
#include <vector>

#include "foundation/core/export.h"
#include "mf/zero/ModelElement.h"

namespace mf::zero {

/// An ordered list of elements, each of them held by a reference. Read it front to back by index.
class FOUNDATION_EXPORT ReferenceCollection {
 public:
  ReferenceCollection(const ReferenceCollection&) = delete;
  ReferenceCollection& operator=(const ReferenceCollection&) = delete;

  std::size_t size() const noexcept { return elements_.size(); }
  bool empty() const noexcept { return elements_.empty(); }

 protected:
  ReferenceCollection() noexcept = default;
  ~ReferenceCollection() = default;

  // Mutable: a resolved element takes its placeholder's place while the list is only read.
  mutable std::vector<ModelElement> elements_;
};

}  // namespace mf::zero
