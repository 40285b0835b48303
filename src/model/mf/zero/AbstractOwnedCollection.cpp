#include "mf/zero/AbstractOwnedCollection.h"

#include <algorithm>

#include "mf/zero/ChangeOperation.h"
#include "mf/zero/CompatibleModel.h"
#include "mf/zero/Placeholders.h"

namespace mf::zero {

AbstractOwnedCollection::~AbstractOwnedCollection() {
  for (const ModelElement& element : elements_) {
    ElementImpl& child = *element.impl_;
    if (child.container_ == owner_) {
      child.container_ = nullptr;
    }
  }
}

void AbstractOwnedCollection::checkCompatibleModel(const ModelElement& element) const {
  mf::zero::checkCompatibleModel(*owner_, *element.impl_);
}

void AbstractOwnedCollection::reserve(std::size_t count) {
  if (count > elements_.capacity()) {
    elements_.reserve(std::max(count, elements_.capacity() * 2));
  }
}

void AbstractOwnedCollection::resolvePlaceholders() const {
  if (!holdsPlaceholders_) {
    return;
  }
  // The size is read anew: resolving runs code of others, which may append to this very list.
  for (std::size_t index = 0; index < elements_.size(); ++index) {
    resolvedAt(index);
  }
  holdsPlaceholders_ = false;
}

void AbstractOwnedCollection::append(const ModelElement& element) {
  if (!element) {
    return;
  }
  checkCompatibleModel(element);
  ElementImpl& child = *element.impl_;
  // Only an element that has been in some list can be in this one: the search is for those alone.
  if (child.everAttached_ && property().duplicates == Duplicates::kRefused && holds(child)) {
    return;
  }
  ChangeOperation change(child);
  if (!child.isProxy()) {
    change.link(*owner_, propertyNumber_);
  }
  change.markAttached();
  elements_.push_back(element);
  change.commit();
  holdsPlaceholders_ = holdsPlaceholders_ || child.isProxy();
}

ModelElement AbstractOwnedCollection::resolveProxy(const ModelElement& element) const {
  if (!element->isProxy()) {
    return element;
  }
  ModelElement resolved = Placeholders::resolve(element, *property().elementClass);
  checkCompatibleModel(resolved);
  return resolved;
}

const ContainedProperty& AbstractOwnedCollection::property() const noexcept {
  return owner_->elementClass().properties[propertyNumber_];
}

bool AbstractOwnedCollection::holds(const ElementImpl& element) const noexcept {
  return std::any_of(elements_.begin(), elements_.end(),
                     [&](const ModelElement& held) { return held.impl_ == &element; });
}

ElementImpl& AbstractOwnedCollection::replacePlaceholder(std::size_t index) const {
  // A copy of the handle: resolving runs code of others, which may append to this very list.
  const ModelElement placeholder = elements_[index];
  const ModelElement resolved = resolveProxy(placeholder);
  ChangeOperation change(*resolved.impl_);
  change.link(*owner_, propertyNumber_);
  change.markAttached();
  elements_[index] = resolved;
  change.commit();
  return *resolved.impl_;
}

}  // namespace mf::zero
