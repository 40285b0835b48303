#include "install/datamodels/common/Release.h"

#include "install/datamodels/ElementNumbers.h"

namespace install::datamodels::common {

const mf::zero::ElementClass Release::Impl::kClass = {
    u"install::datamodels::common::Release", datamodels::kReleaseNumber, sizeof(Release::Impl),
    &mf::zero::destroyElementImpl<Release::Impl>, nullptr};

Release::Impl::~Impl() = default;

}  // namespace install::datamodels::common
