#pragma once

#include <cstddef>

namespace install::datamodels {

/// The numbers of the element classes of these data models. Each class has its own pool in a model,
/// found by its number.
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
