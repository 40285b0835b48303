#include "install/datamodels/product_update/ProductUpdateMetaData.h"

#include "install/datamodels/ElementNumbers.h"

namespace install::datamodels::product_update {
namespace {

using mf::zero::Duplicates;

// In the order of the property numbers.
const mf::zero::ContainedProperty kRootProperties[] = {
    {u"releaseData", &ReleaseData::Impl::kClass, Duplicates::kRefused},
    {u"productsDeltaData", &ProductDeltaData::Impl::kClass, Duplicates::kRefused},
    {u"compsWithFilesToDelete", &ComponentDataWithFilesToDelete::Impl::kClass,
     Duplicates::kRefused},
};

}  // namespace

const mf::zero::ElementClass ProductUpdateMetaData::Impl::kClass = {
    u"install::datamodels::product_update::ProductUpdateMetaData",
    datamodels::kProductUpdateMetaDataNumber, sizeof(ProductUpdateMetaData::Impl),
    &mf::zero::destroyElementImpl<ProductUpdateMetaData::Impl>, kRootProperties};

ProductUpdateMetaData::Impl::Impl() noexcept
    : releaseData_(*this, kReleaseData),
      productsDeltaData_(*this, kProductsDeltaData),
      compsWithFilesToDelete_(*this, kCompsWithFilesToDelete) {}

ProductUpdateMetaData::Impl::~Impl() = default;

}  // namespace install::datamodels::product_update
