// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "foundation/core/export.h"
#include "mf/zero/elements/ModelElement.h"

namespace mf::zero {

/// A field of one element, the owner, that holds one contained element or none.
class FOUNDATION_EXPORT AbstractContainedElement {
 public:
  AbstractContainedElement(const AbstractContainedElement&) = delete;
  AbstractContainedElement& operator=(const AbstractContainedElement&) = delete;

 protected:
  /// A field that is a member of `owner`, of that number; unset.
  AbstractContainedElement(ElementImpl& owner, std::uint8_t propertyNumber) noexcept
      : owner_(&owner), propertyNumber_(propertyNumber) {}

  /// Ends the element's link to the owner, which is going, and drops the reference.
  ~AbstractContainedElement() { unlink(); }

  /// Puts `element`, of whatever class, into the field: see ContainedElement::set().
  void set(const ModelElement& element);

  /// Reads what the field holds.
  const ModelElement& get() const noexcept { return element_; }

 private:
  void unlink() noexcept;

  ElementImpl* owner_;
  ModelElement element_;
  std::uint8_t propertyNumber_;
};

/// A field for one contained element of one class; `Element` is its class of handles.
template <class Element>
class ContainedElement final : public AbstractContainedElement {
 public:
  /// A field that is a member of `owner`, of that number; unset.
  ContainedElement(ElementImpl& owner, std::uint8_t propertyNumber) noexcept
      : AbstractContainedElement(owner, propertyNumber) {}

  /// Puts `element` into the field in place of what it held; an empty handle clears the field.
  ///
  /// \throws foundation::core::except::Exception<IncompatibleModels>  an element of another model;
  ///         nothing has changed then
  void set(const Element& element) { AbstractContainedElement::set(element); }

  /// Returns a new reference to what the field holds, an empty handle while it is unset.
  Element get() const noexcept {
    const ModelElement& held = AbstractContainedElement::get();
    return held ? Element::handleTo(*held.operator->()) : Element();
  }
};

}  // namespace mf::zero
