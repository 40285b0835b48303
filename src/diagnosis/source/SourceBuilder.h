#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>

#include "diagnosis/source/SourceTree.h"

namespace install::update_metadata_parser::diagnosis::source {

/// A sink of the text reader that stores a text as nodes in the order of the text.
class SourceBuilder {
 public:
  /// A payload that is read again, as integers, keeps its nodes, so nothing is stored of it.
  struct Kept {};

  /// Builds the nodes of a text, which must outlive it.
  explicit SourceBuilder(const char* text) : text_(text) {}

  /// The position of the key that comes next.
  void beginKey(const char* position) {
    begin_ = offsetOf(position);
    isKey_ = true;
  }

  /// The position of the value that comes next.
  void beginValue(const char* position) { begin_ = offsetOf(position); }

  /// The end of the key or value that was added or closed last.
  void end(const char* position) { nodes_[last_].end = offsetOf(position); }

  /// Adds the value null.
  void addNull() { add(SourceKind::kNull); }

  /// Adds a boolean.
  void addBoolean(bool /*boolean*/) { add(SourceKind::kBoolean); }

  /// Adds a plain number.
  void addNumber(double /*number*/) { add(SourceKind::kNumber); }

  /// Adds an element of a typed array of signed integers.
  void addInteger(std::int64_t /*integer*/) { add(SourceKind::kInteger); }

  /// Adds an element of a typed array of unsigned integers.
  void addInteger(std::uint64_t /*integer*/) { add(SourceKind::kInteger); }

  /// Adds a string or key without escapes.
  void addStringOfText(std::string_view string) {
    lastString_ = string;
    addText(false);
  }

  /// Adds a string or key with escapes, which are resolved.
  void addString(std::string&& string) {
    decoded_ = std::move(string);
    lastString_ = decoded_;
    addText(true);
  }

  /// Opens an array or object; the next values become its parts. `note` is stored with it.
  void open(std::uint8_t note = 0) {
    const std::size_t outer = open_;
    open_ = nodes_.size();
    // Until a container is closed, its `next` is the container around it.
    const auto kind = text_[begin_] == '{' ? SourceKind::kObject : SourceKind::kArray;
    nodes_.push_back({begin_, 0, outer, kind, false, false, note});
  }

  /// The note of the innermost open container. \pre one is open
  std::uint8_t noteOfInnermost() const { return nodes_[open_].note; }

  /// Closes the innermost container, an array.
  void closeArray() { close(); }

  /// Closes the innermost container, an object.
  void closeObject() { close(); }

  /// The index of the value that was added or closed last.
  std::size_t lastPlace() const { return last_; }

  /// Nothing: its node is kept.
  Kept last() const { return {}; }

  /// The library's name of its kind.
  const char* lastTypeName() const { return nameOf(nodes_[last_].kind); }

  /// Whether it is a string.
  bool lastIsString() const { return nodes_[last_].kind == SourceKind::kString; }

  /// The string or key that was added last, its escapes resolved.
  std::string_view lastString() const { return lastString_; }

  /// Removes the value that was added or closed last.
  Kept takeLast() {
    nodes_.resize(last_);
    return {};
  }

  /// Changes nothing: the nodes of a payload that was read again are those of its first reading.
  void replace(std::size_t /*place*/, Kept /*kept*/) {}

  /// Closes all open containers after a failure at `offset`, and leaves out a payload that was
  /// being read again, because its nodes already exist.
  void breakOff(std::size_t offset);

  /// Offset of the value or key that was added or closed last.
  std::size_t lastBegin() const { return nodes_[last_].begin; }

  /// Whether the last node is an element of a typed payload.
  bool isLastInteger() const {
    return !nodes_.empty() && nodes_.back().kind == SourceKind::kInteger;
  }

  /// Moves all nodes out, in the order of the text.
  std::deque<SourceNode> takeNodes() { return std::move(nodes_); }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::size_t offsetOf(const char* position) const {
    return static_cast<std::size_t>(position - text_);
  }
  void add(SourceKind kind) {
    last_ = nodes_.size();
    nodes_.push_back({begin_, 0, last_ + 1, kind, false, true, 0});
  }
  void addText(bool hasEscapes) {
    add(std::exchange(isKey_, false) ? SourceKind::kKey : SourceKind::kString);
    nodes_.back().hasEscapes = hasEscapes;
  }
  void close() {
    SourceNode& node = nodes_[open_];
    node.isClosed = true;
    last_ = open_;
    open_ = std::exchange(node.next, nodes_.size());
  }

  const char* text_;
  std::deque<SourceNode> nodes_;
  std::size_t open_ = kNone;  // the innermost open container
  std::size_t last_ = 0;      // the value or key that was added or closed last
  std::size_t begin_ = 0;
  bool isKey_ = false;
  std::string decoded_;
  std::string_view lastString_;
};

}  // namespace install::update_metadata_parser::diagnosis::source
