#pragma once

#include <string>
#include <string_view>

#include "lint/FindingList.h"
#include "source/SourceTree.h"

namespace update_metadata_tool::lint {

/// A text that has been read as far as that is sound.
struct MendedText {
  source::SourceTree tree;

  /// Whether every value stands inside what it is meant to stand in. Not so where a bracket too
  /// many or too few may be the fault: then nobody can tell what belongs to what.
  bool isNestingSure;
};

/// Finds what keeps a text from being read, and reads it nevertheless as far as that is sound.
///
/// What is obvious is mended, in place, so that all offsets stay: a comma before a closing bracket,
/// a missing comma before a string, comments, text around the value. What is not ends the reading;
/// the tree then holds what stands before.
///
/// \param mended         takes the mended text if there is one, which the tree then refers to
/// \param readerMessage  takes the library's message about the text as it is, if it cannot be read
MendedText readMending(std::string_view text, std::string& mended, std::string& readerMessage,
                       FindingList& findings);

}  // namespace update_metadata_tool::lint
