#include "summary/Contents.h"

namespace update_metadata_tool::summary {

std::u16string packageName(const Component& component, const Package& package) {
  return package.key.substr(component.name.size() + 1);
}

}  // namespace update_metadata_tool::summary
