#include "input/ProductData.h"

#include <filesystem>
#include <ostream>
#include <system_error>

#include "output/Text.h"

namespace update_metadata_tool::input {
namespace {

// What the system says of a path that it does not let be looked at.
std::string describeRefusal(const std::error_code& error) {
  return "cannot be looked at (" + error.message() + ')';
}

// What keeps the library from finding a table there; nothing if there is one.
std::optional<std::string> findFault(const std::filesystem::path& location) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(location, error);
  if (!std::filesystem::status_known(status)) {
    return describeRefusal(error);
  }
  if (!std::filesystem::exists(status)) {
    return "are not there";
  }
  if (!std::filesystem::is_directory(status)) {
    return std::nullopt;
  }
  const std::filesystem::file_status table =
      std::filesystem::status(location / kProductTable, error);
  if (!std::filesystem::status_known(table)) {
    return std::string("hold a ") + kProductTable + " that " + describeRefusal(error);
  }
  return std::filesystem::exists(table) ? std::nullopt
                                        : std::optional(std::string("hold no ") + kProductTable);
}

}  // namespace

bool noteMissingProductData(const std::optional<std::string>& location, std::ostream& err) {
  const std::optional<std::string> fault = location ? findFault(*location) : std::nullopt;
  if (fault) {
    err << "update-metadata: note: the product data '" << output::toVisible(*location) << "' "
        << *fault << ", so no product has a base code; check --product-data\n";
  }
  return fault.has_value();
}

}  // namespace update_metadata_tool::input
