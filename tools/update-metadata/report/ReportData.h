#pragma once

#include <string>

#include "lint/Finding.h"
#include "summary/Contents.h"

namespace update_metadata_tool {

/// Writes what the page shows of one document as JSON:
///
///     {"version": 1, "file": TEXT,
///      "base": {"family": TEXT, "version": TEXT},
///      "target": {"family": TEXT, "version": TEXT, "updateLevel": N}, "arch": TEXT,
///      "totals": {SUMS, "filesToDelete": N}, "doubtfulSizes": TEXT or null,
///      "packagesToExtract": [[KEY, SIZE, UNCOMPRESSED], ...],
///      "packagesToDelete": [[KEY, SIZE], ...],
///      "components": [{"name": TEXT, "packagesToExtract": [NUMBER, ...],
///                      "packagesToDelete": [NUMBER, ...], BYTES}, ...],
///      "products": [{"name": TEXT, "baseCode": TEXT or null, "componentsToExtract": [NUMBER, ...],
///                    "componentsToDelete": [NUMBER, ...], SUMS}, ...],
///      "componentsWithFiles": [{"name": TEXT, "packages": [{"key": KEY, "size": SIZE,
///                               "files": [TEXT, ...]}, ...]}, ...],
///      "findings": [{"severity": TEXT, "rule": TEXT, "line": N, "column": N, "message": TEXT,
///                    "advice": TEXT, "item": TEXT, "pointer": TEXT}, ...],
///      "omittedFindings": N}
///
/// It mirrors Contents: a NUMBER is a place in the list of that name, from 0. SUMS are
/// "packagesToExtract" and "packagesToDelete", numbers of packages, and BYTES; BYTES are
/// "bytesToFetch", "bytesUnpacked" and "bytesDeleted". As a sum may need more bits than a number of
/// the page's language has, it is a text of digits; one that needs more than 64 is told by the
/// bound that it passes, ">9223372036854775807" or "<-9223372036854775808". A SIZE is a number:
/// those of a document always fit. "doubtfulSizes" is what DoubtfulSizes.h says of those that no
/// package can have, if there are any. Of the findings there are the first ten thousand, and the
/// number of the others. It is one line, in which characters that a terminal must not be sent are
/// escaped, as by JsonWriter.
///
/// \param file     the document's name, to show
/// \param linting  what the linter says of the document
std::string makeReportData(const std::u16string& file, const Contents& contents,
                           const FileReport& linting);

}  // namespace update_metadata_tool
