#pragma once

#include <functional>

#include "mf/zero/elements/ModelElement.h"

namespace mf::zero {

/// Elements that stand for others until somebody looks.
///
/// create() makes none of them: a tree whose parts are loaded on demand would. Its model keeps what
/// each one stands for.
class Placeholders {
 public:
  /// Finds the element that a placeholder stands for; may return an empty handle and may throw.
  using Resolver = std::function<ModelElement()>;

  /// Turns `element`, which has never been attached, into a placeholder.
  static void make(const ModelElement& element, Resolver resolver);

  /// Returns what `placeholder` stands for.
  ///
  /// \throws foundation::core::except::Exception<CannotCastIncompatibleTypes>  nothing, another
  ///         placeholder, or an element that is not of class `wanted`
  static ModelElement resolve(const ModelElement& placeholder, const ElementClass& wanted);
};

}  // namespace mf::zero
