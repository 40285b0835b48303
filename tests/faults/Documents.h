#pragma once

#include <optional>
#include <string>
#include <vector>

namespace test_support {

/// A document that uses every code path of the reader: several products and components, files to
/// delete, escapes, typed payloads before and after their type, long numbers, objects with
/// unordered keys, repeated keys, and arrays that outgrow their first allocation. Names are too
/// long for the strings' inline buffers.
std::string richDocument();

/// A document that cannot be loaded.
struct FailingDocument {
  std::string name;
  std::string text;

  /// The type and the text of the failure. If the text is malformed or not an object, the
  /// document's path follows.
  std::string failure;

  std::optional<int> code;  ///< of a malformed text: the result of the text reader
};

constexpr const char* kParseFailure = "std::runtime_error: Error while parsing ";

/// Returns a document for each message that a load can throw because of its text, for each code
/// that a malformed text can produce, and for each required member.
std::vector<FailingDocument> failingDocuments();

}  // namespace test_support
