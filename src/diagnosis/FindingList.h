#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "diagnosis/Rule.h"
#include "diagnosis/source/SourceTree.h"
#include "install/update_metadata_parser/Diagnosis.h"

namespace install::update_metadata_parser::diagnosis {

/// Another place of the document that a finding refers to, and what is there.
struct Mention {
  std::size_t offset;   ///< byte in the text, from 0
  std::string message;  ///< what is there
};

/// What a finding says.
struct FindingWords {
  std::string message;    ///< what is wrong
  std::string advice;     ///< what to do
  std::string item = {};  ///< what the value is, in words; if empty, derived from its pointer
  std::vector<Mention> related = {};  ///< other places
  std::optional<Fix> fix = {};        ///< how to change the text
};

/// Collects the findings of one document.
///
/// A large document can have millions of problems of one kind. So the first hundred thousand
/// findings of each rule are kept, as long as all findings take at most 128 MB of memory, and the
/// others are counted. A quarter of the memory is reserved for errors, which say why the library
/// rejects a document.
class FindingList {
 public:
  /// How many findings of one rule are kept.
  static constexpr std::size_t kMostOfOneRule = 100'000;

  /// The memory of all findings.
  static constexpr std::size_t kMostBytes = 128'000'000;

  /// The memory of all findings that are not errors.
  static constexpr std::size_t kMostBytesWithoutErrors = kMostBytes / 4 * 3;

  /// Adds a finding about some bytes of the text. Its pointer is that of the innermost value around
  /// them.
  void addAt(Rule rule, std::size_t offset, std::size_t length, FindingWords words);

  /// Adds a finding about a value, or about a member by its key. Of a container only the first byte
  /// is marked.
  void add(Rule rule, const source::SourceTree& tree, std::size_t node, FindingWords words);

  /// As add(), with the first `offset` bytes of the node left unmarked.
  void addInside(Rule rule, const source::SourceTree& tree, std::size_t node, std::size_t offset,
                 std::size_t length, FindingWords words);

  /// Whether there is a finding of a rule whose default severity is an error.
  bool hasErrors() const { return hasErrors_; }

  /// Moves all findings out, in the order of their offsets, with the pointers to their values, but
  /// without lines and columns.
  ///
  /// Findings whose pointers exceed the memory limit are also counted as omitted.
  ///
  /// Instead of a pointer of more than 4,096 bytes, a finding has that of the innermost enclosing
  /// value with a shorter one, so neither deep nesting nor long names make the findings larger than
  /// the document. Linear in the tree, and n log n in the findings.
  std::vector<Finding> take(const source::SourceTree& tree);

  /// How many findings of each rule were left out.
  const std::array<std::size_t, kRuleCount>& omitted() const { return omitted_; }

 private:
  class Pointers;

  void addOf(Rule rule, std::size_t node, std::size_t offset, std::size_t length,
             FindingWords words);

  struct Entry {
    Finding finding;
    Rule rule;
    std::size_t node;
    bool isBeside;  // it is about the text near the node
    bool isKept;
  };

  bool reserve(Severity severity, std::size_t bytes);
  static std::size_t bytesOf(const Finding& finding);
  void leaveOut(const source::SourceTree& tree);
  void addPointers(const source::SourceTree& tree);

  std::deque<Entry> entries_;
  std::size_t bytes_ = 0;
  std::array<std::size_t, kRuleCount> counts_{};
  std::array<std::size_t, kRuleCount> omitted_{};
  bool hasErrors_ = false;
};

}  // namespace install::update_metadata_parser::diagnosis
