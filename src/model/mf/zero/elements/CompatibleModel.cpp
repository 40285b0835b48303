#include "mf/zero/elements/CompatibleModel.h"

#include "mf/zero/elements/Messages.h"

namespace mf::zero {

void throwIncompatibleModel(const ElementImpl& element) {
  reportException(IncompatibleModels{element.elementClass().qualifiedName});
}

}  // namespace mf::zero
