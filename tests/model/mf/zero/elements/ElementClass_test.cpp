#include "mf/zero/elements/ElementClass.h"

#include <gtest/gtest.h>

#include "install/datamodels/product_update/PkgDeltaData.h"
#include "model/mf/zero/fields/OwnedList.h"

namespace mf::zero {
namespace {

using install::datamodels::product_update::PkgDeltaData;
using test_support::OwnedList;

/// An element whose class has the number of another.
class Imposter : public ElementHandle<Imposter> {
 public:
  class Impl;
};

class Imposter::Impl final : public ElementImpl {
 public:
  static const ElementClass kClass;
};

const ElementClass Imposter::Impl::kClass = {u"Imposter", PkgDeltaData::Impl::kClass.number,
                                             sizeof(Imposter::Impl),
                                             &destroyElementImpl<Imposter::Impl>, nullptr};

TEST_F(OwnedList, SharesNoNumberAmongClassesOfOneModel) {
  const PkgDeltaData pkg = make();
  EXPECT_DEATH(static_cast<void>(Imposter::create(model, Uuid())), "");
}

}  // namespace
}  // namespace mf::zero
