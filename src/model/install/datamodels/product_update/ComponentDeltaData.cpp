#include "install/datamodels/product_update/ComponentDeltaData.h"

#include "install/datamodels/ElementNumbers.h"
#include "mf/zero/fields/RowStore.h"

namespace install::datamodels::product_update {
namespace {

using mf::zero::Duplicates;

// In the order of the property numbers.
const mf::zero::ContainedProperty kComponentProperties[] = {
    {u"pkgsToDelete", &PkgDeltaData::Impl::kClass, Duplicates::kRefused},
    {u"pkgsToExtract", &PkgDeltaData::Impl::kClass, Duplicates::kRefused},
};

}  // namespace

const mf::zero::ElementClass ComponentDeltaData::Impl::kClass = {
    u"install::datamodels::product_update::ComponentDeltaData",
    datamodels::kComponentDeltaDataNumber,
    sizeof(ComponentDeltaData::Impl),
    &mf::zero::destroyElementImpl<ComponentDeltaData::Impl>,
    kComponentProperties,
    &mf::zero::makeElementImpl<ComponentDeltaData::Impl>};

ComponentDeltaData::Impl::Impl() noexcept
    : pkgsToDelete_(*this, kPkgsToDelete), pkgsToExtract_(*this, kPkgsToExtract) {}

ComponentDeltaData::Impl::Impl(const mf::zero::RowList& rows, std::size_t index) noexcept : Impl() {
  const auto& row = rows.at<mf::zero::ComponentRow>(index);
  name_ = row.name;
  if (row.packages != nullptr) {
    mf::zero::RowStore::refer(rows.field == kPkgsToDelete ? pkgsToDelete_ : pkgsToExtract_,
                              *row.packages);
  }
}

ComponentDeltaData::Impl::~Impl() = default;

}  // namespace install::datamodels::product_update
