#include "mf/zero/elements/Placeholders.h"

#include <utility>

#include "mf/zero/elements/Messages.h"
#include "mf/zero/memory/ModelImpl.h"

namespace mf::zero {

void Placeholders::make(const ModelElement& element, Resolver resolver) {
  element.impl_->model().resolvers().emplace(element.impl_, std::move(resolver));
  element.impl_->proxy_ = true;
}

ModelElement Placeholders::resolve(const ModelElement& placeholder, const ElementClass& required) {
  // The copy keeps the resolver alive: it is foreign code, which may make and drop placeholders of
  // this model.
  const Resolver resolver = placeholder.impl_->model().resolvers().at(placeholder.impl_);
  ModelElement resolved = resolver();
  if (!resolved) {
    reportException(CannotCastIncompatibleTypes{u"mf::zero::ModelElement"});
  }
  if (resolved->isProxy() || &resolved->elementClass() != &required) {
    reportException(CannotCastIncompatibleTypes{resolved->elementClass().qualifiedName});
  }
  return resolved;
}

}  // namespace mf::zero
