#include "install/datamodels/product_update/PkgDeltaData.h"

#include "install/datamodels/ElementNumbers.h"

namespace install::datamodels::product_update {

const mf::zero::ElementClass PkgDeltaData::Impl::kClass = {
    u"install::datamodels::product_update::PkgDeltaData", datamodels::kPkgDeltaDataNumber,
    sizeof(PkgDeltaData::Impl), &mf::zero::destroyElementImpl<PkgDeltaData::Impl>, nullptr};

PkgDeltaData::Impl::~Impl() = default;

}  // namespace install::datamodels::product_update
