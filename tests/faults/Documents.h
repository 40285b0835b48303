#pragma once

#include <optional>
#include <string>
#include <vector>

namespace test_support {

/// A document with something of everything that is read in a way of its own: several products and
/// components, files to delete, escapes, typed payloads before and behind their type, long numbers,
/// objects whose keys stand in no order, keys that repeat, arrays that outgrow the first room for
/// them. Names are too long to lie in the string objects themselves.
std::string richDocument();

/// A document that cannot be loaded.
struct FailingDocument {
  std::string name;
  std::string text;

  /// The type and the text of the failure. For a text that is malformed or no object the path of
  /// the document follows.
  std::string failure;

  std::optional<int> code;  ///< of a malformed text: what the text reader finds wrong
};

constexpr const char* kParseFailure = "std::runtime_error: Error while parsing ";

/// A document for each message that a load can end with because of its text, for each code that a
/// malformed text can have, and for each member that must be there.
std::vector<FailingDocument> failingDocuments();

}  // namespace test_support
