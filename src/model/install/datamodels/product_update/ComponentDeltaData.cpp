#include "install/datamodels/product_update/ComponentDeltaData.h"

#include "install/datamodels/ElementNumbers.h"

namespace install::datamodels::product_update {
namespace {

using mf::zero::Duplicates;

// In the order of the property numbers.
const mf::zero::ContainedProperty kProperties[] = {
    {u"pkgsToDelete", &PkgDeltaData::Impl::kClass, Duplicates::kRefused},
    {u"pkgsToExtract", &PkgDeltaData::Impl::kClass, Duplicates::kRefused},
};

}  // namespace

const mf::zero::ElementClass ComponentDeltaData::Impl::kClass = {
    u"install::datamodels::product_update::ComponentDeltaData",
    datamodels::kComponentDeltaDataNumber, sizeof(ComponentDeltaData::Impl),
    &mf::zero::destroyElementImpl<ComponentDeltaData::Impl>, kProperties};

ComponentDeltaData::Impl::Impl() noexcept
    : pkgsToDelete_(*this, kPkgsToDelete), pkgsToExtract_(*this, kPkgsToExtract) {}

ComponentDeltaData::Impl::~Impl() = default;

}  // namespace install::datamodels::product_update
