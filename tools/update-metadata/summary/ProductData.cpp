#include "summary/ProductData.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "output/Text.h"

namespace update_metadata_tool::summary {
namespace {

std::string describeRefusal(const std::error_code& error) {
  return "cannot be accessed (" + error.message() + ')';
}

// What keeps the library from finding a table there; nothing if there is one.
std::optional<std::string> findFault(const std::filesystem::path& location) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(location, error);
  if (!std::filesystem::status_known(status)) {
    return describeRefusal(error);
  }
  if (!std::filesystem::exists(status)) {
    return "cannot be found";
  }
  if (!std::filesystem::is_directory(status)) {
    return std::nullopt;
  }
  const std::filesystem::file_status table =
      std::filesystem::status(location / kProductTable, error);
  if (!std::filesystem::status_known(table)) {
    return std::string("contain a ") + kProductTable + " that " + describeRefusal(error);
  }
  return std::filesystem::exists(table) ? std::nullopt
                                        : std::optional(std::string("contain no ") + kProductTable);
}

std::ostream& beginNote(const std::string& location, std::ostream& err) {
  return err << "update-metadata: note: the product data '" << output::toVisible(location) << "' ";
}

}  // namespace

bool noteMissingProductData(const std::optional<std::string>& location, std::ostream& err) {
  const std::optional<std::string> fault =
      location ? findFault(std::filesystem::u8path(*location)) : std::nullopt;
  if (fault) {
    beginNote(*location, err) << *fault
                              << ", so no product has a base code; check --product-data\n";
  }
  return fault.has_value();
}

void noteUnknownProducts(const std::string& location, const std::string& file, std::size_t products,
                         std::ostream& err) {
  if (products != 0) {
    beginNote(location, err) << (products == 1 ? "do not contain the only product"
                                               : "contain none of the " + std::to_string(products) +
                                                     " products")
                             << " of '" << output::toVisible(file) << "'; check --product-data\n";
  }
}

void noteProductData(const std::optional<std::string>& location,
                     std::initializer_list<NamedContents> documents, std::ostream& err) {
  if (!location || noteMissingProductData(location, err)) {
    return;
  }
  for (const auto& [file, contents] : documents) {
    const bool isAnyKnown =
        std::any_of(contents.products.begin(), contents.products.end(),
                    [](const Product& product) { return product.baseCode.has_value(); });
    if (!isAnyKnown) {
      noteUnknownProducts(*location, file, contents.products.size(), err);
    }
  }
}

}  // namespace update_metadata_tool::summary
