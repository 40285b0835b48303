// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "install/update_metadata_parser/Export.h"

namespace install::update_metadata_parser {

/// How serious a finding is. By default, only errors keep a document from being loaded.
enum class Severity {
  kInfo,     ///< allowed, but perhaps not meant
  kWarning,  ///< not read as it is written, or of no effect
  kError     ///< the library rejects the document, or the product data cannot be read
};

/// Another place of the document that a finding refers to.
struct RelatedPlace {
  std::size_t offset;   ///< byte in the text, from 0
  std::size_t line;     ///< from 1; only line feeds end a line
  std::size_t column;   ///< in bytes, from 1
  std::string message;  ///< what is there: "the value that is used"
};

/// A change of the text that removes a problem.
struct Fix {
  std::size_t offset;       ///< first byte that is replaced, from 0
  std::size_t length;       ///< number of bytes that are replaced; 0 inserts
  std::string replacement;  ///< what to write instead; empty removes

  /// Whether applying it needs no decision: the library gives the same answers as before, or it
  /// rejected the document before. Otherwise the fix is a suggestion, which may guess wrong.
  bool isSafe;
};

/// One problem of a document.
///
/// The message and the advice are one sentence each, without an initial capital and without a final
/// full stop; a message may end with a question mark. They may change with any version; the ids of
/// rules stay. Message, advice, pointer and item may quote the document, so they may contain any
/// bytes: control characters, and text that is not UTF-8.
struct Finding {
  std::string_view rule;  ///< the id: "repeated-key"; exists as long as the diagnosis library
  Severity severity;      ///< of the rule
  std::string message;    ///< what is wrong
  std::string advice;     ///< what to do
  std::size_t offset;     ///< first byte that is marked, from 0; at most the size of the text
  std::size_t length;     ///< number of bytes that are marked; may reach beyond the text
  std::size_t line;       ///< of the first byte, from 1; only line feeds end a line
  std::size_t column;     ///< in bytes, from 1

  /// JSON Pointer (RFC 6901) to the value; empty for the whole document. Instead of one of more
  /// than 4,096 bytes, that of an enclosing value.
  std::string pointer;

  /// The value in words: "package 'a' to extract of component 'b'". Empty for the document itself
  /// and for members that are not read.
  std::string item;

  /// Other places that the finding refers to, such as the value that is used.
  std::vector<RelatedPlace> related;

  /// How to change the text, if there is an obvious way. Apply one fix, or several whose bytes do
  /// not overlap, from the last to the first; then diagnose the result.
  std::optional<Fix> fix = std::nullopt;
};

/// Findings of one rule that are left out because there are too many.
struct OmittedFindings {
  std::string_view rule;  ///< as Finding::rule
  Severity severity;      ///< of the rule
  std::size_t count;      ///< how many are left out
};

/// An exception of the library.
struct ThrownException {
  std::string type;  ///< in C++: "std::runtime_error", "std::out_of_range", "std::exception"
  std::string text;  ///< the result of what()
};

/// Everything that is known about one document.
struct Diagnosis {
  /// What UpdateMetaDataJsonParser throws for the document; nothing if it loads.
  std::optional<ThrownException> exception;

  /// The JSON text reader's own message, with line, column and caret, which the parser replaces by
  /// "Error while parsing" and the path. Empty unless the text is malformed.
  std::string readerMessage;

  /// In the order of their offsets. The first 100,000 of each rule, as long as all take at most
  /// 128 MB of memory; a quarter of that is reserved for errors.
  std::vector<Finding> findings;

  /// How many others there are, for each rule with some.
  std::vector<OmittedFindings> omitted;

  /// Whether the library loads the document.
  bool loads() const { return !exception; }
};

/// What a diagnosis needs to know besides the text.
struct DiagnosisOptions {
  /// The path that the parser would be given, which its exceptions may quote. Not opened.
  std::u16string path;

  /// The product data in which the document's products are looked up, if any.
  std::optional<std::u16string> productData;

  /// Called repeatedly while a document is checked, unless it is empty. Its exceptions pass
  /// through.
  std::function<void()> onProgress;
};

/// Says whether the library loads a document and, if not, why; and finds everything in it that is
/// doubtful.
///
/// The document is loaded to find out; the answer is that of an UpdateMetaDataJsonParser of the
/// same version, from which nothing is derived. Without product data, the findings contain an error
/// exactly if the document does not load.
///
/// This is the only function of the library update_metadata_diagnosis, and its records have no code
/// in it. A program that links update_metadata_parser as well has two copies of the reader, which
/// share nothing and know nothing of each other.
///
/// \param text     the bytes of the document, as readFile() returns them
/// \param options  what else there is to know
///
/// \throws std::bad_alloc  there is not enough memory: nothing is known about the document
///
/// Memory is linear in the text: up to 60 times its size, besides the findings. Time is n log n in
/// it, about ten times that of a load. Calls in different threads do not affect each other.
UPDATE_METADATA_PARSER_EXPORT Diagnosis diagnose(std::string_view text,
                                                 const DiagnosisOptions& options = {});

}  // namespace install::update_metadata_parser
