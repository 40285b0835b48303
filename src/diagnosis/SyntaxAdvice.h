#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "diagnosis/source/SourceTree.h"
#include "install/update_metadata_parser/Diagnosis.h"

namespace install::update_metadata_parser::diagnosis {

/// A common mistake, and what to write instead.
struct KnownMistake {
  std::size_t offset;   ///< first byte of the mistake
  std::size_t length;   ///< number of its bytes
  std::string message;  ///< what is wrong
  std::string advice;   ///< what to write instead

  /// How to write it, and what follows it, as JSON.
  std::optional<Fix> fix = {};
};

/// Recognizes notations other than JSON: True, yes, 5 MB, 0x1F, curly quotation marks, '=' and the
/// like, or a whole file in UTF-16. Each is an error in one name or value, not in a bracket.
std::optional<KnownMistake> findKnownMistake(std::string_view text,
                                             const source::SyntaxFault& fault);

/// Returns what to do about any other error in a document that begins at the offset `begin`.
std::string adviseOnSyntax(std::string_view text, std::size_t begin,
                           const source::SyntaxFault& fault);

/// Whether a text contains a quotation mark that JSON does not have.
bool hasCurlyQuote(std::string_view text);

}  // namespace install::update_metadata_parser::diagnosis
