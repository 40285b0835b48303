#pragma once

#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/memory/ModelImpl.h"

namespace mf::zero {

/// Throws the error for `element`, which belongs to another model than the element that should
/// contain it.
/// \throws foundation::core::except::Exception<IncompatibleModels>
[[noreturn]] void throwIncompatibleModel(const ElementImpl& element);

/// Checks that `element` was created in the model of `owner`.
/// \throws foundation::core::except::Exception<IncompatibleModels>
inline void checkCompatibleModel(const ElementImpl& owner, const ElementImpl& element) {
  if (Slab::of(owner).model != Slab::of(element).model) {
    throwIncompatibleModel(element);
  }
}

}  // namespace mf::zero
