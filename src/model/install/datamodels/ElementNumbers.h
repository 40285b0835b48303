#pragma once

#include <cstddef>

namespace install::datamodels {

/// The numbers of the element classes of these data models: each class has a pool of its own in a
/// model, found by its number.
enum ElementNumber : std::size_t {
  kProductUpdateMetaDataNumber,
  kReleaseDataNumber,
  kReleaseNumber,
  kProductDeltaDataNumber,
  kComponentDeltaDataNumber,
  kPkgDeltaDataNumber,
  kComponentDataWithFilesToDeleteNumber,
  kPkgDataWithFilesToDeleteNumber,
};

}  // namespace install::datamodels
