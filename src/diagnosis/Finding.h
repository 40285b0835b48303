#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "diagnosis/Rule.h"
#include "diagnosis/Severity.h"

namespace install::update_metadata_parser::diagnosis {

/// Another place of the document that a finding refers to.
struct RelatedPlace {
  std::size_t offset;   ///< byte in the file, from 0
  std::string message;  ///< what is there: "the value that is used"
};

/// One problem of a document.
///
/// The message and the advice are one sentence each, without an initial capital and without a final
/// full stop; a message may end with a question mark. They, the pointer and the item may quote the
/// document, so they may contain any bytes.
struct Finding {
  Rule rule;
  Severity severity;
  std::size_t offset;   ///< byte in the file, from 0
  std::size_t length;   ///< number of bytes that are marked
  std::string pointer;  ///< JSON Pointer (RFC 6901) to the value; empty for the whole document
  std::string item;     ///< the value in words: "package 'a' to extract of component 'b'"
  std::string message;
  std::string advice;
  std::vector<RelatedPlace> related;
};

/// The exception that the library throws for a document.
struct ThrownException {
  std::string type;  ///< in C++: "std::runtime_error"
  std::string text;  ///< the result of what()
};

/// Everything that is known about one document.
struct FileReport {
  std::string file;                          ///< the path as the user gave it
  std::string text;                          ///< its bytes
  bool loads;                                ///< whether the library loads it
  std::optional<ThrownException> exception;  ///< if it does not
  std::string readerMessage;      ///< the text reader's own message if the text is malformed
  std::vector<Finding> findings;  ///< in the order of their offsets
  /// The number of findings of each rule that are left out because there are too many.
  std::array<std::size_t, kRuleCount> omitted{};
};

}  // namespace install::update_metadata_parser::diagnosis
