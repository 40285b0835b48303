#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "lint/Rule.h"
#include "lint/Severity.h"

namespace update_metadata_tool::lint {

/// Another place of the document that a finding speaks of.
struct RelatedPlace {
  std::size_t offset;   ///< byte in the file, from 0
  std::string message;  ///< what stands there: "the value that is lost stands here"
};

/// One fault of a document.
///
/// The message and the advice are one sentence each, without a capital at the beginning and without
/// a full stop at the end. They, the pointer and the item may quote the document: any bytes.
struct Finding {
  Rule rule;
  Severity severity;
  std::size_t offset;   ///< byte in the file, from 0
  std::size_t length;   ///< bytes that are marked from there on
  std::string pointer;  ///< JSON Pointer (RFC 6901) to the value; empty for the whole document
  std::string item;     ///< what that is, in words: "package 'a' to extract of component 'b'"
  std::string message;
  std::string advice;
  std::vector<RelatedPlace> related;
};

/// The exception that the library throws for a document.
struct ThrownException {
  std::string type;  ///< as a program names it: "std::runtime_error"
  std::string text;  ///< what() gives it
};

/// Everything that is known of one document.
struct FileReport {
  std::string file;                          ///< as the user named it
  std::string text;                          ///< its bytes
  bool loads;                                ///< whether the library loads it
  std::optional<ThrownException> exception;  ///< if it does not
  std::string readerMessage;      ///< the text reader's own message if the text is malformed
  std::vector<Finding> findings;  ///< in the order of their offsets
  /// How many more findings of each rule there are, which are too many to be told.
  std::array<std::size_t, kRuleCount> omitted{};
};

}  // namespace update_metadata_tool::lint
