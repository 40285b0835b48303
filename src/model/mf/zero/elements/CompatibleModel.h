#pragma once

#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/memory/ModelImpl.h"

namespace mf::zero {

/// Throws the refusal of `element`, which is of another model than whatever should contain it.
/// \throws foundation::core::except::Exception<IncompatibleModels>
[[noreturn]] void refuseModelOf(const ElementImpl& element);

/// Tests that `element` was created in the model of `owner`.
/// \throws foundation::core::except::Exception<IncompatibleModels>
inline void checkCompatibleModel(const ElementImpl& owner, const ElementImpl& element) {
  if (Slab::of(owner).model != Slab::of(element).model) {
    refuseModelOf(element);
  }
}

}  // namespace mf::zero
