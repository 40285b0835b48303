#pragma once

#include <string>
#include <string_view>

namespace update_metadata_tool {

/// Replaces what a file holds, wholly or not at all, by writing a new file beside it and giving
/// that its name: whoever opens it finds the old content or the new one, also after a failure.
///
/// Symbolic links are followed and stay. Mode, owner and group are kept; if the system does not
/// permit to keep the group, its rights are dropped, so that no other group gets them. What else
/// belongs to the old file, other hard links for instance, stays with the old content.
///
/// \throws std::system_error  the file is as it was: it is missing, no regular file, may not be
///                            written, or the new one cannot be made beside it
void replaceFile(const std::string& path, std::string_view content);

/// Writes a file that may be there already, wholly or not at all: one that is there is replaced as
/// by replaceFile(), a new one has the mode that the process gives new files.
///
/// \throws std::system_error  nothing is changed: what stands there cannot be replaced, for
///                            instance a symbolic link that leads nowhere, or no file can be made
///                            beside it
void writeFile(const std::string& path, std::string_view content);

}  // namespace update_metadata_tool
