#pragma once

#include <string>

namespace update_metadata_tool::summary {

/// A release that an update starts from or leads to.
struct Release {
  std::u16string family;
  std::u16string version;
};

/// Tells a release for people, "Fernlight 7, version 7.1.0"; "none" if both names are empty.
std::string describeRelease(const Release& release);

}  // namespace update_metadata_tool::summary
