#include "mf/zero/fields/OwnedCollection.h"

#include <exception>

#include "mf/zero/elements/CompatibleModel.h"
#include "mf/zero/elements/Placeholders.h"
#include "mf/zero/fields/RowStore.h"

namespace mf::zero {

AbstractOwnedCollection::AbstractOwnedCollection(ElementImpl& owner,
                                                 std::uint8_t propertyNumber) noexcept
    : distance_(static_cast<std::uint8_t>(reinterpret_cast<const char*>(this) -
                                          reinterpret_cast<const char*>(&owner))),
      propertyNumber_(propertyNumber) {
  static_assert(sizeof(AbstractOwnedCollection) <= 16,
                "every component has lists, so they are small");
  // The list is not a part of its owner, or lies too far from its start.
  if (&this->owner() != &owner) {
    std::terminate();
  }
}

AbstractOwnedCollection::~AbstractOwnedCollection() {
  if (empty() || rows() != nullptr) {
    return;
  }
  const ElementImpl* going = &owner();
  const std::size_t elementBytes = property().elementClass->implSize;
  // Clear every link before dropping a reference: that may run foreign code which sees the other
  // children.
  for (std::size_t index = 0; index != size(); ++index) {
    ElementImpl& child = at(index, elementBytes);
    if (child.container_ == going) {
      child.container_ = nullptr;
    }
  }
  dropReferences();
}

void AbstractOwnedCollection::checkCompatibleModel(const ModelElement& element) const {
  mf::zero::checkCompatibleModel(owner(), *element.impl_);
}

void AbstractOwnedCollection::resolvePlaceholders() const {
  if (!holdsPlaceholders_) {
    return;
  }
  // Read the size each time: a resolver is foreign code and may append to this very list.
  for (std::size_t index = 0; index < size(); ++index) {
    resolvedAt(index, property().elementClass->implSize);
  }
  holdsPlaceholders_ = false;
}

void AbstractOwnedCollection::append(const ModelElement& element, std::size_t elementBytes) {
  if (!element) {
    return;
  }
  ElementImpl& child = *element.impl_;
  mf::zero::checkCompatibleModel(owner(), child);
  if (rows() != nullptr) {
    makeElements();
  }
  // Only an element that was ever in a list can be in this one, so only those are searched for.
  if (child.everAttached_ && property().duplicates == Duplicates::kRefused &&
      holds(child, elementBytes)) {
    return;
  }
  makeRoomFor(child, elementBytes);
  if (child.isProxy()) {
    child.everAttached_ = true;
  } else {
    child.attachTo(owner(), propertyNumber_);
  }
  push(child);
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
  return owner().elementClass().properties[propertyNumber_];
}

void AbstractOwnedCollection::dropReferences() const noexcept {
  const std::size_t elementBytes = property().elementClass->implSize;
  for (std::size_t index = 0; index != size(); ++index) {
    ElementImpl& child = at(index, elementBytes);
    if (child.references_.drop()) {
      ModelElement::destroy(child);
    }
  }
}

void AbstractOwnedCollection::makeElements() const {
  RowStore::makeElements(*this);
}

ElementImpl& AbstractOwnedCollection::replacePlaceholder(ElementImpl& found,
                                                         std::size_t index) const {
  // Held while the resolver, which is foreign code, runs: it may read this very list and so drop
  // the list's own reference.
  const ModelElement placeholder(found);
  const ModelElement resolved = resolveProxy(placeholder);
  resolved.impl_->attachTo(owner(), propertyNumber_);
  replace(index, *resolved.impl_);
  return *resolved.impl_;
}

}  // namespace mf::zero
