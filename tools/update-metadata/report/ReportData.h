#pragma once

#include <string>

#include "install/update_metadata_parser/Diagnosis.h"
#include "summary/Contents.h"

namespace update_metadata_tool::report {

/// Writes the data of the page as JSON:
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
/// "bytesToFetch", "bytesUnpacked" and "bytesDeleted". A sum may need more bits than a number of
/// JavaScript has, so it is a text of digits; one that needs more than 64 bits is given as the
/// bound that it exceeds, ">9223372036854775807" or "<-9223372036854775808". A SIZE is a number, as
/// a document's sizes always fit. "doubtfulSizes" is the text of DoubtfulSizes.h, if any package
/// has an impossible size. "findings" has the first ten thousand, "omittedFindings" the number of
/// the others. The text is one line, with the escapes of JsonWriter.
///
/// \param file     the document's name, to show
std::string makeReportData(const std::u16string& file, const summary::Contents& contents,
                           const install::update_metadata_parser::Diagnosis& diagnosis);

}  // namespace update_metadata_tool::report
