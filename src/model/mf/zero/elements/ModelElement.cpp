#include "mf/zero/elements/ModelElement.h"

#include "mf/zero/memory/ModelImpl.h"

namespace mf::zero {

void* allocateElement(Model::Impl& model, const ElementClass& elementClass) {
  return model.allocate(elementClass);
}

Name ElementImpl::makeName(std::u16string_view text) const {
  return text.empty() ? Name() : Name(Slab::of(*this).model->names().intern(text));
}

Model::Impl& ElementImpl::model() const noexcept {
  return *Slab::of(*this).model;
}

const ElementClass& ElementImpl::elementClass() const noexcept {
  return *Slab::of(*this).elementClass;
}

ModelElement ElementImpl::getContainer() const noexcept {
  return hasLivingContainer() ? ModelElement(*container_) : ModelElement();
}

const ContainedProperty* ElementImpl::getContainerProperty() const noexcept {
  return hasLivingContainer() ? &container_->elementClass().properties[propertyNumber_] : nullptr;
}

void ModelElement::destroy(ElementImpl& impl) noexcept {
  const Slab& slab = Slab::of(impl);
  Model::Impl& model = *slab.model;
  const ElementClass& elementClass = *slab.elementClass;
  if (impl.isProxy()) {
    // Taken out of the table before it is destroyed: it may hold the last reference to another
    // placeholder.
    const auto resolver = model.resolvers().extract(&impl);
  }
  elementClass.destroyImpl(impl);
  model.release(impl, elementClass);
}

}  // namespace mf::zero
