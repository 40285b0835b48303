#include "mf/zero/fields/ContainedElement.h"

#include "mf/zero/elements/CompatibleModel.h"

namespace mf::zero {

void AbstractContainedElement::set(const ModelElement& element) {
  if (!element) {
    unlink();
    element_ = ModelElement();
    return;
  }
  checkCompatibleModel(*owner_, *element.impl_);
  unlink();
  element.impl_->attachTo(*owner_, propertyNumber_);
  element_ = element;
}

void AbstractContainedElement::unlink() noexcept {
  // Since then, the element may have moved to another container or to another field of this one.
  if (element_ && element_.impl_->container_ == owner_ &&
      element_.impl_->propertyNumber_ == propertyNumber_) {
    element_.impl_->container_ = nullptr;
  }
}

}  // namespace mf::zero
