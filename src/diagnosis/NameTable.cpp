#include "diagnosis/NameTable.h"

#include <algorithm>

namespace install::update_metadata_parser::diagnosis {

NameTable::NameTable(const SourceDocument& document, std::size_t object) {
  add(document, object);
  sort(document);
}

void NameTable::add(const SourceDocument& document, std::size_t object) {
  std::size_t count = entries_.size();
  document.forEachMember(object, [&](std::size_t /*key*/) { ++count; });
  entries_.reserve(count);
  document.forEachMember(object, [&](std::size_t key) {
    entries_.push_back({document.nameOf(key), key});
  });
}

void NameTable::sort(const SourceDocument& document) {
  const auto isBefore = [&document](const Entry& left, const Entry& right) {
    const int order = left.name.compare(right.name);
    return order < 0 || (order == 0 && document.bytesOf(left.key) < document.bytesOf(right.key));
  };
  std::stable_sort(entries_.begin(), entries_.end(), isBefore);
}

std::size_t NameTable::find(std::string_view name) const {
  const auto found =
      std::lower_bound(entries_.begin(), entries_.end(), name,
                       [](const Entry& entry, std::string_view key) { return entry.name < key; });
  return found != entries_.end() && found->name == name
             ? static_cast<std::size_t>(found - entries_.begin())
             : kNever;
}

}  // namespace install::update_metadata_parser::diagnosis
