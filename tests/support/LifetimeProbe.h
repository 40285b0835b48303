#pragma once

#include <memory>

#include "mf/zero/elements/ModelElement.h"
#include "mf/zero/elements/Placeholders.h"

namespace test_support {

/// Watches an element without holding it.
///
/// Turns the element, which must never have been attached, into a placeholder whose resolver is
/// destroyed together with the element.
class LifetimeProbe {
 public:
  explicit LifetimeProbe(const mf::zero::ModelElement& element) {
    const auto token = std::make_shared<char>();
    token_ = token;
    mf::zero::Placeholders::make(element, [token] { return mf::zero::ModelElement(); });
  }

  /// Whether the element still exists.
  bool alive() const { return !token_.expired(); }

 private:
  std::weak_ptr<char> token_;
};

}  // namespace test_support
