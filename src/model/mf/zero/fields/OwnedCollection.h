// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/core/export.h"
#include "mf/zero/elements/ElementClass.h"
#include "mf/zero/fields/ReferenceCollection.h"

namespace mf::zero {

/// A list of elements that one element, the owner, contains.
///
/// It holds a reference to each, does not keep its owner alive, and keeps the order of appending.
/// Nothing is ever removed, replaced or reordered, except that a placeholder is replaced by the
/// element that it represents.
///
/// The library fills a list with rows, which lists of other owners may share. Reading one of its
/// elements, or appending to it, makes all of them, in order and once; from then on the list
/// consists of elements. The only visible difference is that this may throw std::bad_alloc; the
/// list is then unchanged.
class FOUNDATION_EXPORT AbstractOwnedCollection : public ReferenceCollection {
 public:
  /// Checks that `element` may be in this list: that it belongs to the owner's model.
  ///
  /// \pre the handle is not empty
  /// \throws foundation::core::except::Exception<IncompatibleModels>
  void checkCompatibleModel(const ModelElement& element) const;

  /// Announces that the list will contain `count` elements in total, so that its array grows once
  /// instead of step by step; a run or rows need no array. Repeatedly reserving a little more still
  /// takes amortized constant time for each element.
  void reserve(std::size_t count) { ReferenceCollection::reserve(count); }

  /// Replaces every placeholder in the list by its element, front to back. Constant time if there
  /// is none.
  ///
  /// \throws what resolveProxy() throws; placeholders before the failing one have been replaced
  void resolvePlaceholders() const;

 protected:
  /// A list for the field with that number, a member of `owner`.
  AbstractOwnedCollection(ElementImpl& owner, std::uint8_t propertyNumber) noexcept;

  /// Ends the elements' links to the owner, which is being destroyed, and drops the references.
  ~AbstractOwnedCollection();

  /// Appends `element`, whose class has implementation objects of that size: see
  /// OwnedCollection::append().
  void append(const ModelElement& element, std::size_t elementBytes);

  /// Finds the element that `element` represents: see OwnedCollection::resolveProxy().
  ModelElement resolveProxy(const ModelElement& element) const;

  /// The element at `index`, which replaces a placeholder there.
  ElementImpl& resolvedAt(std::size_t index, std::size_t elementBytes) const {
    if (rows() != nullptr) {
      makeElements();
    }
    ElementImpl& element = at(index, elementBytes);
    return isRun() || !element.isProxy() ? element : replacePlaceholder(element, index);
  }

 private:
  friend class RowStore;

  ElementImpl& owner() const noexcept {
    const void* start = reinterpret_cast<const char*>(this) - distance_;
    return *static_cast<ElementImpl*>(const_cast<void*>(start));
  }
  FOUNDATION_HIDDEN const ContainedProperty& property() const noexcept;
  ElementImpl& replacePlaceholder(ElementImpl& found, std::size_t index) const;
  FOUNDATION_HIDDEN void dropReferences() const noexcept;
  void makeElements() const;

  std::uint8_t distance_;  // from the start of the owner, in bytes; smaller than a pointer
  std::uint8_t propertyNumber_;
  mutable bool holdsPlaceholders_ = false;  // true if there may be any
};

/// A list of contained elements of one class; `Element` is their class of handles.
template <class Element>
class OwnedCollection final : public AbstractOwnedCollection {
 public:
  /// An empty list for the field with that number, a member of `owner`.
  OwnedCollection(ElementImpl& owner, std::uint8_t propertyNumber) noexcept
      : AbstractOwnedCollection(owner, propertyNumber) {}

  /// Appends `element` to the list and makes the owner its container.
  ///
  /// An empty handle is ignored. An element that is already in this list is not added again;
  /// another element with the same content is. A placeholder is not linked to the owner.
  ///
  /// \throws foundation::core::except::Exception<IncompatibleModels>  an element of another model
  /// \throws std::bad_alloc
  ///
  /// If it throws, nothing has changed. Amortized constant time for an element that was never in a
  /// list or field; linear in the list for one that was, because it must be searched for.
  void append(const Element& element) {
    AbstractOwnedCollection::append(element, sizeof(typename Element::Impl));
  }

  /// Returns a new reference to the element at `index`, from 0. A placeholder there is first
  /// replaced by the element that it represents.
  ///
  /// \pre `index` is less than size()
  /// \throws std::bad_alloc  the elements had to be made
  /// \throws foundation::core::except::Exception<CannotCastIncompatibleTypes>  as resolveProxy()
  Element operator[](std::size_t index) const {
    return Element::handleTo(resolvedAt(index, sizeof(typename Element::Impl)));
  }

  /// Reads the element at `index` in place, as operator[] does but without a reference, for walks
  /// over many elements. The element is valid as long as its container.
  const typename Element::Impl& readAt(std::size_t index) const {
    return static_cast<const typename Element::Impl&>(
        resolvedAt(index, sizeof(typename Element::Impl)));
  }

  /// Returns the element that `element`, a placeholder, represents; any other element is returned
  /// as it is.
  ///
  /// \pre the handle is not empty; not checked
  /// \throws foundation::core::except::Exception<CannotCastIncompatibleTypes>
  ///         it represents nothing, another placeholder, or an element of a class that does not
  ///         belong in this list
  /// \throws foundation::core::except::Exception<IncompatibleModels>
  ///         it represents an element of another model
  Element resolveProxy(const Element& element) const {
    return Element::handleTo(*AbstractOwnedCollection::resolveProxy(element).operator->());
  }
};

}  // namespace mf::zero
