#pragma once

#include <string_view>

namespace update_metadata_tool::schema {

/// The text of update-metadata.schema.json, byte for byte: what a document has to look like for the
/// library to load it, as a JSON Schema (draft 2020-12).
extern const std::string_view kSchemaText;

}  // namespace update_metadata_tool::schema
