#pragma once

#include <string>
#include <string_view>

#include "diagnosis/FindingList.h"
#include "diagnosis/source/SourceTree.h"

namespace install::update_metadata_parser::diagnosis {

/// A text that has been read as far as its meaning is clear.
struct RepairedText {
  source::SourceTree tree;  ///< its values, as far as they are clear

  /// False if an extra or missing bracket may be the cause of an error: then it is unclear which
  /// value belongs to which container.
  bool isNestingSure;
};

/// Finds the syntax errors of a text, and reads it as far as its meaning is clear.
///
/// Obvious errors are repaired in place, so that offsets stay the same: a comma before a closing
/// bracket, a missing comma before a string, comments, text around the value. Reading stops at any
/// other error; the tree then contains what comes before it.
///
/// `repaired` receives the repaired text if there is one; the tree then refers to it.
/// `readerMessage` receives the library's message about the original text if it is malformed.
RepairedText readRepairing(std::string_view text, std::string& repaired, std::string& readerMessage,
                           FindingList& findings);

}  // namespace install::update_metadata_parser::diagnosis
