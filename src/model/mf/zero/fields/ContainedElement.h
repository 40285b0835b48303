// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "foundation/core/export.h"
#include "mf/zero/elements/ModelElement.h"

namespace mf::zero {

/// A field of one element, the owner, that contains at most one element.
class FOUNDATION_EXPORT AbstractContainedElement {
 public:
  AbstractContainedElement(const AbstractContainedElement&) = delete;
  AbstractContainedElement& operator=(const AbstractContainedElement&) = delete;

 protected:
  /// An unset field with that number, a member of `owner`.
  AbstractContainedElement(ElementImpl& owner, std::uint8_t propertyNumber) noexcept
      : owner_(&owner), propertyNumber_(propertyNumber) {}

  /// Ends the element's link to the owner, which is being destroyed, and drops the reference.
  ~AbstractContainedElement() { unlink(); }

  /// Puts `element`, of any class, into the field: see ContainedElement::set().
  void set(const ModelElement& element);

  /// Reads the content of the field.
  const ModelElement& get() const noexcept { return element_; }

 private:
  void unlink() noexcept;

  ElementImpl* owner_;
  ModelElement element_;
  std::uint8_t propertyNumber_;
};

/// A field that contains at most one element of one class; `Element` is its class of handles.
template <class Element>
class ContainedElement final : public AbstractContainedElement {
 public:
  /// An unset field with that number, a member of `owner`.
  ContainedElement(ElementImpl& owner, std::uint8_t propertyNumber) noexcept
      : AbstractContainedElement(owner, propertyNumber) {}

  /// Puts `element` into the field, replacing the former one; an empty handle clears the field.
  ///
  /// \throws foundation::core::except::Exception<IncompatibleModels>  an element of another model;
  ///         nothing has changed then
  void set(const Element& element) { AbstractContainedElement::set(element); }

  /// Returns a new reference to the element in the field; an empty handle while it is unset.
  Element get() const noexcept {
    const ModelElement& held = AbstractContainedElement::get();
    return held ? Element::handleTo(*held.operator->()) : Element();
  }
};

}  // namespace mf::zero
