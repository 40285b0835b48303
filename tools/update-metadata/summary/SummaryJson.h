#pragma once

#include "output/JsonWriter.h"
#include "summary/Contents.h"
#include "summary/DoubtfulSizes.h"
#include "summary/Totals.h"

namespace update_metadata_tool::summary {

/// The members "base", {"family", "version"}, and "target", {"family", "version", "updateLevel"}.
void writeReleases(const Release& base, const Release& target, int updateLevel,
                   output::JsonWriter& json);

/// A member with {"negative", "truncated"}.
void writeMember(const char* name, const DoubtfulSizes& sizes, output::JsonWriter& json);

/// The members "packagesToDelete", "packagesToExtract", "bytesToFetch", "bytesUnpacked" and
/// "bytesDeleted". A number of bytes that does not fit into 64 bits is null.
void writeMembers(const Totals& totals, output::JsonWriter& json);

}  // namespace update_metadata_tool::summary
