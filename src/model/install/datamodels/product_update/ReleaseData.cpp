#include "install/datamodels/product_update/ReleaseData.h"

#include "install/datamodels/ElementNumbers.h"

namespace install::datamodels::product_update {
namespace {

using mf::zero::Duplicates;

// In the order of the property numbers.
const mf::zero::ContainedProperty kReleaseProperties[] = {
    {u"baseRelease", &common::Release::Impl::kClass, Duplicates::kRefused},
    {u"targetRelease", &common::Release::Impl::kClass, Duplicates::kRefused},
};

}  // namespace

const mf::zero::ElementClass ReleaseData::Impl::kClass = {
    u"install::datamodels::product_update::ReleaseData", datamodels::kReleaseDataNumber,
    sizeof(ReleaseData::Impl), &mf::zero::destroyElementImpl<ReleaseData::Impl>,
    kReleaseProperties};

ReleaseData::Impl::Impl() noexcept
    : baseRelease_(*this, kBaseRelease), targetRelease_(*this, kTargetRelease) {}

ReleaseData::Impl::~Impl() = default;

}  // namespace install::datamodels::product_update
