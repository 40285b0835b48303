#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// A JSON text taken apart so that pieces of it can be changed: members keep their order, repeated
/// keys stay, and scalars and keys are the bytes that stood in the text.
struct DocumentTree {
  std::string key;    ///< with its quotation marks; empty unless this is a member of an object
  std::string token;  ///< a scalar as it stands, or "{" or "["
  std::vector<DocumentTree> parts;

  bool isObject() const { return token == "{"; }
  bool isContainer() const { return token == "{" || token == "["; }
};

/// Takes a text apart; nothing if it is too far from JSON or nested too deep. Literals and numbers
/// are not looked into.
std::optional<DocumentTree> takeApart(std::string_view text);

/// Writes a tree as text, without white space.
std::string putTogether(const DocumentTree& tree);

}  // namespace fuzz
