// SPDX-License-Identifier: MIT

#pragma once

// Forward declarations for the headers of this folder: types of this library, of the JSON value and
// of the product catalogue. The other headers contain none.

namespace foundation::json {

class Object;
class Value;

}  // namespace foundation::json

namespace install::product_data_provider {

class ProductDataProvider;

}  // namespace install::product_data_provider

namespace install::update_metadata_parser {

class LimitedHandler;
class LimitedParser;
class UpdateMetaData;
class UpdateMetaDataHandler;
class UpdateMetaDataJsonParser;
struct Limits;
struct UpdatePkgData;

}  // namespace install::update_metadata_parser
