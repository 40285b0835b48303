#pragma once

#include <cstddef>
#include <deque>
#include <memory_resource>
#include <optional>
#include <string_view>
#include <vector>

#include "diagnosis/source/SourceTree.h"

namespace install::update_metadata_parser::diagnosis {

/// A document as the library reads it: without the later values of repeated keys.
class SourceDocument {
 public:
  /// Decodes every string and key with escapes or ill-formed UTF-8 once. Linear in the text.
  explicit SourceDocument(const source::SourceTree& tree);

  /// The text with the places of all its values.
  const source::SourceTree& tree() const { return tree_; }

  /// Leaves out the member with this key from now on.
  void ignore(std::size_t key) { isIgnored_[key] = true; }

  /// Whether the member with this key is left out.
  bool isIgnored(std::size_t key) const { return isIgnored_[key]; }

  /// Calls `visit(key)` for each member of an object in the order of the text; the value is the
  /// node after the key.
  template <class Visit>
  void forEachMember(std::size_t object, Visit visit) const {
    forEachWrittenMember(object, [&](std::size_t key) {
      if (!isIgnored_[key]) {
        visit(key);
      }
    });
  }

  /// The same for every member as it is written, even if it is left out.
  template <class Visit>
  void forEachWrittenMember(std::size_t object, Visit visit) const {
    const std::size_t end = tree_[object].next;
    for (std::size_t key = object + 1; key < end; key = tree_[key + 1].next) {
      visit(key);
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

  /// Whether a value is of a kind.
  bool isA(source::SourceKind kind, std::size_t value) const { return tree_[value].kind == kind; }

  /// The bytes of a string or key, its escapes resolved, which live as long as the document.
  /// Logarithmic time.
  std::string_view bytesOf(std::size_t node) const;

  /// A string or key as the library reads it, in UTF-8: each ill-formed part is U+FFFD. The text
  /// lives as long as the document. Logarithmic time.
  std::string_view nameOf(std::size_t node) const;

 private:
  // A string or key with escapes or ill-formed UTF-8.
  struct Decoded {
    std::size_t node;
    std::string_view bytes;
    std::string_view name;
  };

  std::string_view keep(std::string_view text);
  const Decoded* findDecoded(std::size_t node) const;

  const source::SourceTree& tree_;
  std::vector<bool> isIgnored_;  // by the index of a key
  std::pmr::monotonic_buffer_resource texts_;
  std::deque<Decoded> decoded_;  // in the order of the nodes
  bool isUtf8_;                  // the whole text
};

/// The values of the sections of a document, except those that are missing, null or of the wrong
/// kind.
struct Sections {
  std::optional<std::size_t> metadata;    ///< "metadata"
  std::optional<std::size_t> components;  ///< "components"
  std::optional<std::size_t> products;    ///< "products"
  std::optional<std::size_t> files;       ///< "componentsWithFilesDeleted"
  bool areComponentsNull = false;         ///< no component is described, which is not an error
};

}  // namespace install::update_metadata_parser::diagnosis
