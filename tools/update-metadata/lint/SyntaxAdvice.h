#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "source/SourceTree.h"

namespace update_metadata_tool::lint {

/// A mistake that has a name, and what to write instead.
struct KnownMistake {
  std::size_t offset;
  std::size_t length;
  std::string message;
  std::string advice;
};

/// Recognizes what people write who know another notation: True, yes, 5 MB, 0x1F, curly quotation
/// marks, '=' and the like, or a whole file in UTF-16. Each is a fault of one name or value, not of
/// a bracket.
std::optional<KnownMistake> findKnownMistake(std::string_view text,
                                             const source::SyntaxFault& fault);

/// Says what to do about any other fault.
///
/// \param begin  where the document begins
std::string adviseOnSyntax(std::string_view text, std::size_t begin,
                           const source::SyntaxFault& fault);

/// Whether a text contains a quotation mark that is none in JSON.
bool hasCurlyQuote(std::string_view text);

}  // namespace update_metadata_tool::lint
