#pragma once

#include <string_view>

namespace update_metadata_tool::schema {

/// The bytes of update-metadata.schema.json, the JSON Schema (draft 2020-12) of documents that the
/// library loads.
extern const std::string_view kSchemaText;

}  // namespace update_metadata_tool::schema
