#include "ProductData.h"

#include <filesystem>
#include <ostream>
#include <system_error>

#include "Text.h"

namespace update_metadata_tool {
namespace {

void note(const std::string& location, const std::string& fault, std::ostream& err) {
  err << "update-metadata: note: the product data '" << toVisible(location) << "' " << fault
      << ", so no product has a base code; check --product-data\n";
}

}  // namespace

void noteMissingProductData(const std::optional<std::string>& location, std::ostream& err) {
  if (!location) {
    return;
  }
  const std::filesystem::path path(*location);
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) {
    note(*location, "are not there", err);
  } else if (std::filesystem::is_directory(path, ignored) &&
             !std::filesystem::exists(path / kProductTable, ignored)) {
    note(*location, std::string("hold no ") + kProductTable, err);
  }
}

}  // namespace update_metadata_tool
