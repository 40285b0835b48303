#include "install/datamodels/product_update/ComponentDataWithFilesToDelete.h"

#include "install/datamodels/ElementNumbers.h"

namespace install::datamodels::product_update {
namespace {

using mf::zero::Duplicates;

// In the order of the property numbers.
const mf::zero::ContainedProperty kComponentWithFilesProperties[] = {
    {u"pkgsWithFilesToDelete", &PkgDataWithFilesToDelete::Impl::kClass, Duplicates::kRefused},
};

}  // namespace

const mf::zero::ElementClass ComponentDataWithFilesToDelete::Impl::kClass = {
    u"install::datamodels::product_update::ComponentDataWithFilesToDelete",
    datamodels::kComponentDataWithFilesToDeleteNumber, sizeof(ComponentDataWithFilesToDelete::Impl),
    &mf::zero::destroyElementImpl<ComponentDataWithFilesToDelete::Impl>,
    kComponentWithFilesProperties};

ComponentDataWithFilesToDelete::Impl::Impl() noexcept
    : pkgsWithFilesToDelete_(*this, kPkgsWithFilesToDelete) {}

ComponentDataWithFilesToDelete::Impl::~Impl() = default;

}  // namespace install::datamodels::product_update
