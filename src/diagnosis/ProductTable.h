#pragma once

#include <string>
#include <vector>

namespace install::update_metadata_parser::diagnosis {

/// The table in a folder with product data.
constexpr const char* kProductTable = "products.tsv";

/// The names of the products, which are the second column of the table. None if the product data
/// have another form.
std::vector<std::string> readProductNames(const std::u16string& productData);

}  // namespace install::update_metadata_parser::diagnosis
