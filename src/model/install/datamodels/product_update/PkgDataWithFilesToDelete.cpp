#include "install/datamodels/product_update/PkgDataWithFilesToDelete.h"

#include "install/datamodels/ElementNumbers.h"

namespace install::datamodels::product_update {

const mf::zero::ElementClass PkgDataWithFilesToDelete::Impl::kClass = {
    u"install::datamodels::product_update::PkgDataWithFilesToDelete",
    datamodels::kPkgDataWithFilesToDeleteNumber, sizeof(PkgDataWithFilesToDelete::Impl),
    &mf::zero::destroyElementImpl<PkgDataWithFilesToDelete::Impl>, nullptr};

PkgDataWithFilesToDelete::Impl::~Impl() = default;

}  // namespace install::datamodels::product_update
