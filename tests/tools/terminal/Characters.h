#pragma once

#include <string>

namespace update_metadata_tool::terminal {

inline const std::string kEllipsis = "\xE2\x80\xA6";
inline const std::string kUmlaut = "\xC3\xBC";           // one column
inline const std::string kAcute = "\xCC\x81";            // a mark: none
inline const std::string kIdeograph = "\xE4\xB8\x80";    // two
inline const std::string kPicture = "\xF0\x9F\x93\xA6";  // two

}  // namespace update_metadata_tool::terminal
