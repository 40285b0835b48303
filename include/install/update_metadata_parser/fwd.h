// SPDX-License-Identifier: MIT

#pragma once

// The forward declarations that the headers of this folder need, of this library's types, the JSON
// value's and the product catalogue's. These headers declare nothing forward themselves.

namespace foundation::json {

class Object;
class Value;

}  // namespace foundation::json

namespace install::product_data_provider {

class ProductDataProvider;

}  // namespace install::product_data_provider

namespace install::update_metadata_parser {

class UpdateMetaData;
class UpdateMetaDataHandler;
class UpdateMetaDataJsonParser;
struct UpdatePkgData;

}  // namespace install::update_metadata_parser
