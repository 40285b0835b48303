#pragma once

#include <string_view>
#include <vector>

#include "generate/Document.h"

namespace bench::generate {

/// A named shape of documents.
struct Preset {
  std::string_view name;
  std::string_view description;
  DocumentShape shape;
};

/// All presets, in the order in which they are measured.
const std::vector<Preset>& presets();

/// Returns the preset with that name, or null.
const Preset* findPreset(std::string_view name);

}  // namespace bench::generate
