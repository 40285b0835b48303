#include "mf/zero/fields/ContainedElement.h"

#include "mf/zero/elements/ChangeOperation.h"
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
  ChangeOperation change(*element.impl_);
  change.link(*owner_, propertyNumber_);
  change.markAttached();
  element_ = element;
  change.commit();
}

void AbstractContainedElement::unlink() noexcept {
  // Another container, or another field of this one, may have taken the element since.
  if (element_ && element_.impl_->container_ == owner_ &&
      element_.impl_->propertyNumber_ == propertyNumber_) {
    element_.impl_->container_ = nullptr;
  }
}

}  // namespace mf::zero
