#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "install/update_metadata_parser/Diagnosis.h"

namespace install::update_metadata_parser::diagnosis {

/// Quotation marks that text processors write and JSON does not have.
constexpr std::array<std::string_view, 10> kCurlyQuotes = {
    "\xE2\x80\x98", "\xE2\x80\x99", "\xE2\x80\x9A", "\xE2\x80\x9B", "\xE2\x80\x9C",
    "\xE2\x80\x9D", "\xE2\x80\x9E", "\xE2\x80\x9F", "\xC2\xAB",     "\xC2\xBB",
};

/// The word of JSON, true, false or null, that a word of another language means; null if there is
/// none. `word` is in lower case.
const char* findMeantWord(std::string_view word);

/// Suggests how to write, as JSON, what begins at `offset` in the notation of another language:
/// strings in other quotation marks, names without them, and words like True and None.
///
/// Also corrects the same mistakes in what follows, in at most a megabyte and up to the first byte
/// that cannot be understood. Nothing if that is the one at `offset`.
std::optional<Fix> rewriteNotation(std::string_view text, std::size_t offset);

}  // namespace install::update_metadata_parser::diagnosis
