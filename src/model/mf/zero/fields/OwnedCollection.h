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
/// It holds a reference to each, knows its owner only while that lives, and keeps the order in
/// which the elements were appended. Nothing is ever removed, replaced or reordered, except that a
/// placeholder gives way to the element that it stands for.
///
/// The library fills a list with rows that lists of other owners share. Asking for one of its
/// elements, or appending to it, makes all of them, in order and once; from then on they are the
/// list. Nothing else shows the difference, except that this may throw std::bad_alloc, and then the
/// list has not changed.
class FOUNDATION_EXPORT AbstractOwnedCollection : public ReferenceCollection {
 public:
  /// Tests that `element` may stand in this list: that it belongs to the owner's model.
  ///
  /// \pre the handle is not empty.
  /// \throws foundation::core::except::Exception<IncompatibleModels>
  void checkCompatibleModel(const ModelElement& element) const;

  /// Says that the list will hold `count` elements in all, so that an array of them grows once and
  /// not step by step; a run needs no room. Whoever asks for a little more each time still pays
  /// constant time, amortised, for an element.
  void reserve(std::size_t count) { ReferenceCollection::reserve(count); }

  /// Has every placeholder of the list give way to its element, front to back. Constant time if
  /// there is none.
  ///
  /// \throws what resolveProxy() throws; placeholders before the failing one have given way
  void resolvePlaceholders() const;

 protected:
  /// A list that is a member of `owner`, for its field of that number.
  AbstractOwnedCollection(ElementImpl& owner, std::uint8_t propertyNumber) noexcept;

  /// Ends the elements' link to the owner, which is going, and drops the references.
  ~AbstractOwnedCollection();

  /// Puts `element`, whose class has implementation objects of that size, at the end: see
  /// OwnedCollection::append().
  void append(const ModelElement& element, std::size_t elementBytes);

  /// Finds what `element` stands for: see OwnedCollection::resolveProxy().
  ModelElement resolveProxy(const ModelElement& element) const;

  /// The element at `index`, which has taken its placeholder's place if there was one.
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

  std::uint8_t distance_;  // from the start of the owner, in bytes: shorter than a pointer to it
  std::uint8_t propertyNumber_;
  mutable bool holdsPlaceholders_ = false;  // or has held some, none of which is known to be left
};

/// A list of contained elements of one class; `Element` is their class of handles.
template <class Element>
class OwnedCollection final : public AbstractOwnedCollection {
 public:
  /// A list that is a member of `owner`, for its field of that number; empty.
  OwnedCollection(ElementImpl& owner, std::uint8_t propertyNumber) noexcept
      : AbstractOwnedCollection(owner, propertyNumber) {}

  /// Puts `element` at the end of the list and makes the owner its container.
  ///
  /// An empty handle is ignored. An element that this list already holds is not taken twice;
  /// another element of the same content is. A placeholder is not linked to the owner.
  ///
  /// \throws foundation::core::except::Exception<IncompatibleModels>  an element of another model
  /// \throws std::bad_alloc
  ///
  /// If it throws, nothing has changed. Constant time, amortised, for an element that was never in
  /// a list or field; linear in the list for one that was, which has to be looked for.
  void append(const Element& element) {
    AbstractOwnedCollection::append(element, sizeof(typename Element::Impl));
  }

  /// Returns a new reference to the element at `index`, from 0. A placeholder there is resolved
  /// first, and the element that it stands for takes its place.
  ///
  /// \pre `index` is less than size().
  /// \throws std::bad_alloc  the elements had to be made
  /// \throws foundation::core::except::Exception<CannotCastIncompatibleTypes>  as resolveProxy()
  Element operator[](std::size_t index) const {
    return Element::handleTo(resolvedAt(index, sizeof(typename Element::Impl)));
  }

  /// Reads the element at `index` in place, as operator[] does but without a reference: for walks
  /// that look at many. The element stays for as long as its container.
  const typename Element::Impl& readAt(std::size_t index) const {
    return static_cast<const typename Element::Impl&>(
        resolvedAt(index, sizeof(typename Element::Impl)));
  }

  /// Returns the element that `element`, a placeholder, stands for; any other element is returned
  /// as it is.
  ///
  /// \pre the handle is not empty; not checked.
  /// \throws foundation::core::except::Exception<CannotCastIncompatibleTypes>
  ///         it stands for nothing, for another placeholder, or for an element of a class that does
  ///         not belong in this list
  /// \throws foundation::core::except::Exception<IncompatibleModels>
  ///         it stands for an element of another model
  Element resolveProxy(const Element& element) const {
    return Element::handleTo(*AbstractOwnedCollection::resolveProxy(element).operator->());
  }
};

}  // namespace mf::zero
