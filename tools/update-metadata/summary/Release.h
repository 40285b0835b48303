#pragma once

#include <string>

namespace update_metadata_tool::summary {

/// A release that an update starts from or leads to.
struct Release {
  std::u16string family;
  std::u16string version;
};

}  // namespace update_metadata_tool::summary
