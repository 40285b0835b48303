#pragma once

#include <cstdint>

#include "foundation/core/export.h"
#include "mf/zero/elements/ModelElement.h"

namespace mf::zero {

/// The scope of one change: an element enters a field of its new container.
///
/// Nobody listens to changes in this framework. What the scope does is keep them whole: a change
/// that ends without commit() takes the element's link back to what it was.
class FOUNDATION_EXPORT ChangeOperation {
 public:
  /// Opens a change of `element`'s place in the tree. The element must outlive the scope.
  explicit ChangeOperation(ElementImpl& element) noexcept
      : element_(&element),
        formerContainer_(element.container_),
        formerProperty_(element.propertyNumber_),
        formerlyAttached_(element.everAttached_) {}

  ChangeOperation(const ChangeOperation&) = delete;
  ChangeOperation& operator=(const ChangeOperation&) = delete;

  ~ChangeOperation() {
    if (element_ != nullptr) {
      element_->container_ = formerContainer_;
      element_->propertyNumber_ = formerProperty_;
      element_->everAttached_ = formerlyAttached_;
    }
  }

  /// Makes `container`, with its field of that number, the element's place in the tree.
  void link(ElementImpl& container, std::uint8_t propertyNumber) noexcept {
    element_->container_ = &container;
    element_->propertyNumber_ = propertyNumber;
  }

  /// Notes that the element has been in a list or field, linked or not.
  void markAttached() noexcept { element_->everAttached_ = true; }

  /// Makes the change final.
  void commit() noexcept { element_ = nullptr; }

 private:
  ElementImpl* element_;
  ElementImpl* formerContainer_;
  std::uint8_t formerProperty_;
  bool formerlyAttached_;
};

}  // namespace mf::zero
