#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "lint/FindingList.h"
#include "lint/Members.h"
#include "lint/SourceDocument.h"

namespace update_metadata_tool::lint {

/// Reports what a number of bytes loses when the library reads it, and negative ones. Returns what
/// it is read as, if nothing is to be said of it.
std::optional<std::int64_t> checkSize(const SourceDocument& document, std::size_t number,
                                      const char* name, const DescribeItem& item,
                                      FindingList& findings);

/// A size as it is read, and its node.
struct ReadSize {
  std::size_t node;
  std::int64_t bytes;
};

/// Reports two sizes of a package that do not go together: it is smaller unpacked than packed, or
/// so much larger that the packed size may be in kilobytes.
void checkSizePair(const SourceDocument& document, ReadSize packed, ReadSize unpacked,
                   const DescribeItem& item, FindingList& findings);

/// Reports an update level that is not read back as it is written.
void checkUpdateLevel(const SourceDocument& document, std::size_t number, FindingList& findings);

}  // namespace update_metadata_tool::lint
