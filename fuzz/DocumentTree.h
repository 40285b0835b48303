#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fuzz {

/// A JSON text taken apart so that pieces of it can be changed: members keep their order, repeated
/// keys stay, and scalars and keys are the bytes that stood in the text.
///
/// Nodes lie in one block and keys and tokens stay where they stood, so that a tree that is used
/// for one text after another asks for hardly any memory. What is taken off stays in the block.
class DocumentTree {
 public:
  /// A node, by its number. The root is the first one.
  using Node = std::size_t;

  static constexpr Node kRoot = 0;
  static constexpr Node kNone = ~Node{0};

  /// Takes `text` apart, which has to stay as it is for as long as the tree is used, and forgets
  /// the text before. False if it is too far from JSON or nested too deep; the tree is not to be
  /// used then. Literals and numbers are not looked into.
  bool takeApart(std::string_view text);

  /// Writes the tree as text, without white space.
  std::string putTogether() const;

  /// The key with its quotation marks; empty unless the node is a member of an object.
  std::string_view key(Node node) const { return nodes_[node].key; }

  /// A scalar as it stands, or "{" or "[".
  std::string_view token(Node node) const { return nodes_[node].token; }

  bool isObject(Node node) const { return token(node) == "{"; }
  bool isContainer(Node node) const { return isObject(node) || token(node) == "["; }

  /// The first node in a container and the one after a node; kNone if there is none.
  Node firstPart(Node node) const { return nodes_[node].first; }
  Node nextPart(Node node) const { return nodes_[node].next; }

  std::size_t countParts(Node node) const;

  /// Keeps a text for as long as the tree's own.
  std::string_view keep(std::string text) { return kept_.emplace_back(std::move(text)); }

  void setKey(Node node, std::string_view key) { nodes_[node].key = key; }
  void setToken(Node node, std::string_view token) { nodes_[node].token = token; }

  /// Gives a node the value of another one, which must not be used in any other way after that.
  void setValue(Node node, Node value);

  /// A copy of a node of this or another tree and of all below it, which hangs nowhere yet. The
  /// other tree's text has to stay.
  Node copyOf(const DocumentTree& tree, Node node);

  /// Hangs a node that hangs nowhere into a container, behind so many others.
  void insertPart(Node container, std::size_t place, Node part);

  void dropPart(Node container, Node part);
  void reverseParts(Node container);

 private:
  class Reader;

  struct Content {
    std::string_view key;
    std::string_view token;
    Node first = kNone;
    Node next = kNone;
  };

  Node add(std::string_view key, std::string_view token);
  void append(Node node, std::string& text) const;

  std::vector<Content> nodes_;
  std::deque<std::string> kept_;
};

}  // namespace fuzz
