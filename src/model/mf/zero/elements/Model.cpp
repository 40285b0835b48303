#include "mf/zero/elements/Model.h"

#include "mf/zero/memory/ModelImpl.h"

namespace mf::zero {

Model Model::create(const ModelSpec&) {
  Model model;
  model.impl_ = new Impl;
  model.addRef();
  return model;
}

void Model::addRef() const noexcept {
  if (impl_ != nullptr) {
    impl_->addRef();
  }
}

void Model::removeRef() const noexcept {
  if (impl_ != nullptr) {
    impl_->removeRef();
  }
}

}  // namespace mf::zero
