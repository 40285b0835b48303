#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "mf/zero/fields/OwnedCollection.h"
#include "mf/zero/fields/RowList.h"
#include "mf/zero/memory/BlockMemory.h"
#include "mf/zero/text/Name.h"
#include "mf/zero/text/StringPool.h"

namespace mf::zero {

/// The lists of rows of one model.
///
/// In most documents, many products name the same components, and a component has the same packages
/// each time. The store remembers the rows of the last component with each name: if the next one
/// has the same packages, both refer to one list.
class RowStore {
 public:
  /// A row whose name is not yet in the model.
  struct NewRow {
    std::u16string_view name;        ///< read while the row is compared or stored
    std::int64_t size;               ///< bytes
    std::int64_t uncompressedBytes;  ///< bytes after unpacking
  };

  /// Makes an empty store that keeps its names in `names`.
  explicit RowStore(StringPool& names) noexcept : names_(names) {}

  RowStore(const RowStore&) = delete;
  RowStore& operator=(const RowStore&) = delete;

  /// The store of `model`. \pre the handle is not empty.
  static RowStore& of(const Model& model) noexcept;

  /// The rows that `list` refers to, or null if it consists of elements.
  static const RowList* rowsOf(const AbstractOwnedCollection& list) noexcept { return list.rows(); }

  /// How many lists have been made so far; their numbers are below it.
  std::size_t size() const noexcept { return lists_; }

  /// Begins a round. Until the next one, components with one name have the same rows.
  std::uint64_t beginRound() noexcept { return ++lastRound_; }

  /// Fills `list`, an empty list of this model in a component with that name.
  ///
  /// `newRow` makes a NewRow from each of `entries`. They are compared with the rows of the last
  /// component with that name, for the same field, unless that was filled in the same round.
  ///
  /// \throws std::bad_alloc  the list is still empty
  template <class Entries, class MakeNewRow>
  void fill(AbstractOwnedCollection& list, Name component, std::uint64_t round,
            const Entries& entries, MakeNewRow newRow) {
    Latest& latest = latest_[{component.identity(), list.propertyNumber_}];
    if (latest.round != round) {
      if (latest.rows == nullptr || !isEqual(*latest.rows, entries, newRow)) {
        latest.rows = &add(entries, newRow);
      }
      latest.round = round;
    }
    list.setRows(*latest.rows);
  }

 private:
  struct Key {
    const InternedString* component;
    std::uint8_t propertyNumber;

    friend bool operator==(const Key& left, const Key& right) noexcept {
      return left.component == right.component && left.propertyNumber == right.propertyNumber;
    }
  };

  // The hash of the name, which depends on a secret key: anyone who chooses the sizes of texts also
  // chooses the distances between their addresses.
  struct KeyHash {
    std::size_t operator()(const Key& key) const noexcept {
      return (key.component == nullptr ? 0 : key.component->hash) + key.propertyNumber;
    }
  };

  struct Latest {
    const RowList* rows = nullptr;
    std::uint64_t round = 0;
  };

  static bool isEqual(const Row& row, const NewRow& other) noexcept;

  template <class Entries, class MakeNewRow>
  static bool isEqual(const RowList& rows, const Entries& entries, MakeNewRow newRow) {
    if (rows.size != entries.size()) {
      return false;
    }
    const Row* row = rows.begin();
    for (const auto& entry : entries) {
      if (!isEqual(*row++, newRow(entry))) {
        return false;
      }
    }
    return true;
  }

  template <class Entries, class MakeNewRow>
  const RowList& add(const Entries& entries, MakeNewRow newRow) {
    RowList& rows = allocate(entries.size());
    std::size_t index = 0;
    for (const auto& entry : entries) {
      set(rows, index++, newRow(entry));
    }
    ++lists_;
    return rows;
  }

  RowList& allocate(std::size_t size);
  void set(RowList& rows, std::size_t index, const NewRow& row);

  StringPool& names_;
  std::uint64_t lastRound_ = 0;
  std::size_t lists_ = 0;
  std::unordered_map<Key, Latest, KeyHash> latest_;
  BlockMemory memory_;
};

}  // namespace mf::zero
