#pragma once

#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// No index, or no node.
constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

/// The names of the members of objects and the nodes of their keys, sorted for look-ups. Equal
/// names are in the order in which the library visits objects.
class NameTable {
 public:
  /// A member.
  struct Entry {
    std::string_view name;  ///< as the library reads it
    std::size_t key;        ///< the node
  };

  NameTable() = default;

  /// The members of one object. n log n in them.
  NameTable(const SourceDocument& document, std::size_t object);

  /// The members of several objects; `forEachObject(visit)` calls `visit(object)` for each.
  template <class ForEachObject>
  static NameTable ofObjects(const SourceDocument& document, ForEachObject forEachObject) {
    NameTable table;
    forEachObject([&](std::size_t object) { table.add(document, object); });
    table.sort(document);
    return table;
  }

  /// The members, sorted.
  const std::vector<Entry>& entries() const { return entries_; }

  /// The index of the first entry of that name; kNever if there is none. Logarithmic time.
  std::size_t find(std::string_view name) const;

 private:
  void add(const SourceDocument& document, std::size_t object);
  void sort(const SourceDocument& document);

  std::vector<Entry> entries_;
};

}  // namespace install::update_metadata_parser::diagnosis
