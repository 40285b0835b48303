#include "summary/Release.h"

#include "output/Text.h"

namespace update_metadata_tool::summary {

std::string describeRelease(const Release& release) {
  if (release.family.empty() && release.version.empty()) {
    return "none";
  }
  return output::toVisible(release.family) + ", version " + output::toVisible(release.version);
}

}  // namespace update_metadata_tool::summary
