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
  // Another container, or another field of this one, may have taken the element since.
  if (element_ && element_.impl_->container_ == owner_ &&
      element_.impl_->propertyNumber_ == propertyNumber_) {
    element_.impl_->container_ = nullptr;
  }
}

}  // namespace mf::zero
