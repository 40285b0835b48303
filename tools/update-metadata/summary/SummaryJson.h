#pragma once

#include "output/JsonWriter.h"
#include "summary/DoubtfulSizes.h"
#include "summary/Release.h"
#include "summary/Totals.h"

namespace update_metadata_tool {

/// {"family", "version"}
void write(const Release& release, JsonWriter& json);

/// The same for a target release, with "updateLevel" at its end.
void writeTarget(const Release& release, int updateLevel, JsonWriter& json);

/// {"negative", "truncated"}
void write(const DoubtfulSizes& sizes, JsonWriter& json);

/// The members "packagesToDelete", "packagesToExtract", "bytesToFetch", "bytesUnpacked" and
/// "bytesDeleted". A number of bytes that does not fit into 64 bits is null.
void writeMembers(const Totals& totals, JsonWriter& json);

}  // namespace update_metadata_tool
