#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "diagnosis/FindingList.h"
#include "diagnosis/Members.h"
#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// Reports a size that is negative or that the library reads as another number. Returns the size as
/// it is read if nothing is reported.
std::optional<std::int64_t> checkSize(const SourceDocument& document, std::size_t number,
                                      const char* name, const DescribeItem& item,
                                      FindingList& findings);

/// A size as it is read, and its node.
struct ReadSize {
  std::size_t node;    ///< the number
  std::int64_t bytes;  ///< its value
};

/// Reports two sizes of a package that do not fit together: it is smaller unpacked than packed, or
/// so much larger that the packed size may be in kilobytes.
void checkSizePair(const SourceDocument& document, ReadSize packed, ReadSize unpacked,
                   const DescribeItem& item, FindingList& findings);

/// Reports an update level that is read back as another number.
void checkUpdateLevel(const SourceDocument& document, std::size_t number, FindingList& findings);

}  // namespace install::update_metadata_parser::diagnosis
