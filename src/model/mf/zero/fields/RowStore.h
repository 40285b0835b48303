#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
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
/// each time. The store remembers the packages of the last component with each name: if the next
/// one has the same, both refer to one list.
class RowStore {
 public:
  /// A package whose name is not yet in the model.
  struct NewPackage {
    std::u16string_view name;        ///< read while the package is compared or stored
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

  /// Makes `list`, which is empty and of this model, refer to `rows`.
  static void refer(AbstractOwnedCollection& list, const RowList& rows) noexcept {
    list.setRows(rows);
  }

  /// Makes elements of all rows of `list`, in order: the list then consists of elements.
  ///
  /// \pre the list refers to rows
  /// \throws std::bad_alloc  the list is unchanged
  static void makeElements(const AbstractOwnedCollection& list);

  /// Begins a round. Until the next one, components with one name have the same packages.
  std::uint64_t beginRound() noexcept { return ++lastRound_; }

  /// Stores a name, as ElementImpl::makeName() does.
  Name nameOf(std::u16string_view text) {
    return text.empty() ? Name() : Name(names_.intern(text));
  }

  /// Returns the rows of packages of a component, for its list with the number `field`.
  ///
  /// `newPackage` makes a NewPackage from each of `entries`. They are compared with the rows of the
  /// last component with that name, for the same field, unless those were requested in the same
  /// round.
  ///
  /// \throws std::bad_alloc
  template <class Entries, class MakeNewPackage>
  const RowList& packages(Name component, std::uint8_t field, std::uint64_t round,
                          const Entries& entries, MakeNewPackage newPackage) {
    Latest& latest = latest_[{component.identity(), field}];
    if (latest.round != round) {
      if (latest.rows == nullptr || !isEqual(*latest.rows, entries, newPackage)) {
        latest.rows = &addPackages(entries, newPackage);
      }
      latest.round = round;
    }
    return *latest.rows;
  }

  /// Makes rows of components, whose packages are for their lists with the number `field`. `newRow`
  /// makes a row from each of `entries`.
  ///
  /// \throws std::bad_alloc
  template <class Entries, class MakeRow>
  const RowList& addComponents(std::uint8_t field, const Entries& entries, MakeRow newRow) {
    RowList& rows = allocate(entries.size(), sizeof(ComponentRow));
    rows.field = field;
    std::size_t index = 0;
    for (const auto& entry : entries) {
      new (placeOf<ComponentRow>(rows, index++)) ComponentRow(newRow(entry));
    }
    return rows;
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

  static bool isEqual(const PackageRow& row, const NewPackage& other) noexcept;

  template <class Entries, class MakeNewPackage>
  static bool isEqual(const RowList& rows, const Entries& entries, MakeNewPackage newPackage) {
    if (rows.size != entries.size()) {
      return false;
    }
    std::size_t index = 0;
    for (const auto& entry : entries) {
      if (!isEqual(rows.at<PackageRow>(index++), newPackage(entry))) {
        return false;
      }
    }
    return true;
  }

  template <class Entries, class MakeNewPackage>
  const RowList& addPackages(const Entries& entries, MakeNewPackage newPackage) {
    RowList& rows = allocate(entries.size(), sizeof(PackageRow));
    rows.number = packageLists_;
    std::size_t index = 0;
    for (const auto& entry : entries) {
      setPackage(rows, index++, newPackage(entry));
    }
    ++packageLists_;
    return rows;
  }

  template <class Row>
  static void* placeOf(RowList& rows, std::size_t index) noexcept {
    static_assert(sizeof(RowList) % alignof(Row) == 0, "rows begin right after the head");
    return reinterpret_cast<char*>(&rows + 1) + index * sizeof(Row);
  }

  RowList& allocate(std::size_t size, std::size_t rowBytes);
  void setPackage(RowList& rows, std::size_t index, const NewPackage& package);

  StringPool& names_;
  std::uint64_t lastRound_ = 0;
  std::size_t packageLists_ = 0;
  std::unordered_map<Key, Latest, KeyHash> latest_;
  BlockMemory memory_;
};

}  // namespace mf::zero
