#pragma once

#include "output/JsonWriter.h"
#include "why/Search.h"

namespace update_metadata_tool::why {

/// Writes what one document says as one object.
void writeJson(const FoundDocument& found, output::JsonWriter& json);

}  // namespace update_metadata_tool::why
