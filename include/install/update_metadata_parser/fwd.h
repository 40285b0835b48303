// SPDX-License-Identifier: MIT

#pragma once

// Every forward declaration that the public headers need, of this library's types and of the
// platform's.

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
