#include "summary/Release.h"

#include "output/Text.h"

namespace update_metadata_tool {

std::string describeRelease(const Release& release) {
  if (release.family.empty() && release.version.empty()) {
    return "none";
  }
  return toVisible(release.family) + ", version " + toVisible(release.version);
}

}  // namespace update_metadata_tool
