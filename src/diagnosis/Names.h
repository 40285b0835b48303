#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "diagnosis/FindingList.h"
#include "diagnosis/Members.h"
#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// Reports a name or path that is empty or contains control or invisible characters. The message
/// calls it by `what`: "component", "path".
void checkName(SourceDocument& document, std::size_t node, const char* what,
               const DescribeItem& item, FindingList& findings);

/// Reports keys of an object that are doubtful as names: empty ones, control and invisible
/// characters, the two names that the text reader reserves, and different bytes that are read as
/// the same name.
void checkNames(SourceDocument& document, std::size_t object, const char* what,
                FindingList& findings);

/// Reports paths of files to delete that leave the package's folder, name another place on another
/// system, or differ only in case.
void checkPaths(SourceDocument& document, std::size_t array, const DescribeItem& item,
                FindingList& findings);

}  // namespace install::update_metadata_parser::diagnosis
