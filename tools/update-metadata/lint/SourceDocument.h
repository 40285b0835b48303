#pragma once

#include <cstddef>
#include <deque>
#include <memory_resource>
#include <optional>
#include <string_view>
#include <vector>

#include "source/SourceTree.h"

namespace update_metadata_tool::lint {

/// A document as the library sees it: without the values that a repeated key loses.
class SourceDocument {
 public:
  /// Decodes every string and key that is not read as it is written, each once. Linear in the text.
  explicit SourceDocument(const source::SourceTree& tree);

  const source::SourceTree& tree() const { return tree_; }

  /// Leaves the member with this key out from now on.
  void lose(std::size_t key) { isLost_[key] = true; }

  /// Calls `visit(key)` for each member of an object in the order of the text; the value is the
  /// node behind the key.
  template <class Visit>
  void forEachMember(std::size_t object, Visit visit) const {
    const std::size_t end = tree_[object].next;
    for (std::size_t key = object + 1; key < end; key = tree_[key + 1].next) {
      if (!isLost_[key]) {
        visit(key);
      }
    }
  }

  /// Calls `visit(element)` for each element of an array.
  template <class Visit>
  void forEachElement(std::size_t array, Visit visit) const {
    const std::size_t end = tree_[array].next;
    for (std::size_t element = array + 1; element < end; element = tree_[element].next) {
      visit(element);
    }
  }

  bool isA(source::SourceKind kind, std::size_t value) const { return tree_[value].kind == kind; }

  /// The bytes that a string or key stands for, its escapes resolved. They stay as long as the
  /// document; logarithmic time.
  std::string_view bytesOf(std::size_t node) const;

  /// A string or key as the library reads it, in UTF-8: ill-formed parts are U+FFFD there. The text
  /// stays as long as the document; logarithmic time.
  std::string_view nameOf(std::size_t node) const;

 private:
  // A string or key that is not read as it is written.
  struct Decoded {
    std::size_t node;
    std::string_view bytes;
    std::string_view name;
  };

  std::string_view keep(std::string_view text);
  const Decoded* findDecoded(std::size_t node) const;

  const source::SourceTree& tree_;
  std::vector<bool> isLost_;  // by the index of a key
  std::pmr::monotonic_buffer_resource texts_;
  std::deque<Decoded> decoded_;  // in the order of the nodes
  bool isUtf8_;                  // all of the text
};

/// What is known of the sections of a document; those that are missing, null or of the wrong kind
/// are not there.
struct Sections {
  std::optional<std::size_t> metadata;
  std::optional<std::size_t> components;
  std::optional<std::size_t> products;
  std::optional<std::size_t> files;
  bool areComponentsNull = false;  ///< so that no component is described, which is no fault
};

}  // namespace update_metadata_tool::lint
