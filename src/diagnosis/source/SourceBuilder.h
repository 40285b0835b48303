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

  explicit SourceBuilder(const char* text) : text_(text) {}

  void beginKey(const char* position) {
    begin_ = offsetOf(position);
    isKey_ = true;
  }
  void beginValue(const char* position) { begin_ = offsetOf(position); }
  void end(const char* position) { nodes_[last_].end = offsetOf(position); }

  void addNull() { add(SourceKind::kNull); }
  void addBoolean(bool /*boolean*/) { add(SourceKind::kBoolean); }
  void addNumber(double /*number*/) { add(SourceKind::kNumber); }
  void addInteger(std::int64_t /*integer*/) { add(SourceKind::kInteger); }
  void addInteger(std::uint64_t /*integer*/) { add(SourceKind::kInteger); }
  void addStringOfText(std::string_view string) {
    lastString_ = string;
    addText(false);
  }
  void addString(std::string&& string) {
    decoded_ = std::move(string);
    lastString_ = decoded_;
    addText(true);
  }

  void open(std::uint8_t note = 0) {
    const std::size_t outer = open_;
    open_ = nodes_.size();
    // Until a container is closed, its `next` is the container around it.
    const auto kind = text_[begin_] == '{' ? SourceKind::kObject : SourceKind::kArray;
    nodes_.push_back({begin_, 0, outer, kind, false, false, note});
  }
  std::uint8_t noteOfInnermost() const { return nodes_[open_].note; }
  void closeArray() { close(); }
  void closeObject() { close(); }

  std::size_t lastPlace() const { return last_; }
  Kept last() const { return {}; }
  const char* lastTypeName() const { return nameOf(nodes_[last_].kind); }
  bool lastIsString() const { return nodes_[last_].kind == SourceKind::kString; }
  std::string_view lastString() const { return lastString_; }
  Kept takeLast() {
    nodes_.resize(last_);
    return {};
  }
  void replace(std::size_t /*place*/, Kept /*kept*/) {}

  /// Closes all open containers after a failure at `offset`, and leaves out a payload that was
  /// being read again, because its nodes already exist.
  void breakOff(std::size_t offset);

  /// Offset of the value or key that was added or closed last.
  std::size_t lastBegin() const { return nodes_[last_].begin; }

  bool isLastInteger() const {
    return !nodes_.empty() && nodes_.back().kind == SourceKind::kInteger;
  }

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
