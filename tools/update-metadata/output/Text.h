#pragma once

#include <string>
#include <string_view>

#include "diagnosis/Text.h"

namespace update_metadata_tool::output {

using install::update_metadata_parser::diagnosis::appendHexadecimal;
using install::update_metadata_parser::diagnosis::appendVisible;
using install::update_metadata_parser::diagnosis::Character;
using install::update_metadata_parser::diagnosis::continuesCharacter;
using install::update_metadata_parser::diagnosis::firstCharacter;
using install::update_metadata_parser::diagnosis::isUnseen;
using install::update_metadata_parser::diagnosis::isUtf8;
using install::update_metadata_parser::diagnosis::kLowerCaseHexadecimal;
using install::update_metadata_parser::diagnosis::startsWith;
using install::update_metadata_parser::diagnosis::takeCharacter;
using install::update_metadata_parser::diagnosis::toUtf16;
using install::update_metadata_parser::diagnosis::toUtf8;

/// Returns whether `text` is well-formed UTF-16, without unpaired surrogates.
bool isUtf16(std::u16string_view text);

/// Converts UTF-16 to UTF-8 that is safe to show on a terminal.
///
/// Shows unseen characters as their codes, <U+001B>, and an empty text as (empty).
std::string toVisible(std::u16string_view text);

/// The same for a name. Blanks at its ends are also shown as their codes, <U+0020>, so that names
/// that differ only in them look different.
std::string toVisibleName(std::u16string_view name);

/// As toVisible(), for bytes. Bytes that are not UTF-8 are shown as their values, <FF>.
std::string toVisible(std::string_view text);

}  // namespace update_metadata_tool::output
