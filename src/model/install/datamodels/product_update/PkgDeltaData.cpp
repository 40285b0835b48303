#include "install/datamodels/product_update/PkgDeltaData.h"

#include "install/datamodels/ElementNumbers.h"
#include "mf/zero/fields/RowList.h"

namespace install::datamodels::product_update {

const mf::zero::ElementClass PkgDeltaData::Impl::kClass = {
    u"install::datamodels::product_update::PkgDeltaData",
    datamodels::kPkgDeltaDataNumber,
    sizeof(PkgDeltaData::Impl),
    &mf::zero::destroyElementImpl<PkgDeltaData::Impl>,
    nullptr,
    &mf::zero::makeElementImpl<PkgDeltaData::Impl>};

PkgDeltaData::Impl::Impl(const mf::zero::RowList& rows, std::size_t index) noexcept {
  const auto& row = rows.at<mf::zero::PackageRow>(index);
  name_ = row.name;
  size_ = row.size;
  uncompressedBytes_ = row.uncompressedBytes;
}

PkgDeltaData::Impl::~Impl() = default;

}  // namespace install::datamodels::product_update
