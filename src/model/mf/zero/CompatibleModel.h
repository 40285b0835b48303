#pragma once

#include "mf/zero/ModelElement.h"

namespace mf::zero {

/// Tests that `element` was created in the model of `owner`.
/// \throws foundation::core::except::Exception<IncompatibleModels>
void checkCompatibleModel(const ElementImpl& owner, const ElementImpl& element);

}  // namespace mf::zero
