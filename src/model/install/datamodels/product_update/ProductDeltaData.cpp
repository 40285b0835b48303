#include "install/datamodels/product_update/ProductDeltaData.h"

#include "install/datamodels/ElementNumbers.h"

namespace install::datamodels::product_update {
namespace {

using mf::zero::Duplicates;

// In the order of the property numbers.
const mf::zero::ContainedProperty kProductProperties[] = {
    {u"compsToDelete", &ComponentDeltaData::Impl::kClass, Duplicates::kRefused},
    {u"compsToExtract", &ComponentDeltaData::Impl::kClass, Duplicates::kRefused},
};

}  // namespace

const mf::zero::ElementClass ProductDeltaData::Impl::kClass = {
    u"install::datamodels::product_update::ProductDeltaData", datamodels::kProductDeltaDataNumber,
    sizeof(ProductDeltaData::Impl), &mf::zero::destroyElementImpl<ProductDeltaData::Impl>,
    kProductProperties};

ProductDeltaData::Impl::Impl() noexcept
    : compsToDelete_(*this, kCompsToDelete), compsToExtract_(*this, kCompsToExtract) {}

ProductDeltaData::Impl::~Impl() = default;

}  // namespace install::datamodels::product_update
