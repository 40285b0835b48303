#pragma once

#include <functional>

#include "mf/zero/elements/ModelElement.h"

namespace mf::zero {

/// Elements that represent others until they are first read.
///
/// create() never makes one; they are for trees whose parts are loaded on demand. The model stores
/// the resolver of each placeholder.
class Placeholders {
 public:
  /// Finds the element that a placeholder represents; may return an empty handle and may throw.
  using Resolver = std::function<ModelElement()>;

  /// Turns `element`, which has never been attached, into a placeholder.
  static void make(const ModelElement& element, Resolver resolver);

  /// Returns the element that `placeholder` represents.
  ///
  /// \throws foundation::core::except::Exception<CannotCastIncompatibleTypes>
  ///         it represents nothing, another placeholder, or an element that is not of class
  ///         `required`
  static ModelElement resolve(const ModelElement& placeholder, const ElementClass& required);
};

}  // namespace mf::zero
