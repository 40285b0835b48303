#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "install/update_metadata_parser/Diagnosis.h"

namespace install::update_metadata_parser::diagnosis {

/// Removes the comment at `offset` and those after it, in at most a megabyte, as far as the text is
/// JSON except for its comments.
///
/// The document begins at the offset `begin` or at the end of the comments there. A comment goes
/// with the blanks before it, and with its line if there is nothing else on it. Nothing if the
/// comment is not closed, or if the text ends in it.
std::optional<Fix> removeComments(std::string_view text, std::size_t begin, std::size_t offset);

/// Removes the bytes from `offset` up to the end of the line, a comment in a notation that the text
/// reader does not know: "# note". A suggestion if they may be something else.
std::optional<Fix> removeHashComment(std::string_view text, std::size_t offset);

/// Whether a text consists only of white space, comments, superfluous brackets and commas, and
/// characters that fill up a file.
bool isEmptyRest(std::string_view text);

}  // namespace install::update_metadata_parser::diagnosis
