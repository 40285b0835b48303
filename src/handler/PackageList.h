#pragma once

#include <cstddef>
#include <string_view>

#include "mf/zero/fields/OwnedCollection.h"
#include "mf/zero/fields/RowStore.h"
#include "mf/zero/text/Name.h"

namespace install::update_metadata_parser {

/// The packages of a component, read in place: rows of its model, or a list of elements of class
/// `Pkg`. Reading it makes no elements.
template <class Pkg>
class PackageList {
 public:
  /// Refers to the packages in `list`, whose placeholders have been replaced.
  explicit PackageList(const mf::zero::OwnedCollection<Pkg>& list) noexcept
      : rows_(mf::zero::RowStore::rowsOf(list)), elements_(&list), size_(list.size()) {}

  /// Refers to rows.
  explicit PackageList(const mf::zero::RowList& rows) noexcept : rows_(&rows), size_(rows.size) {}

  /// The rows, or null for a list of elements.
  const mf::zero::RowList* rows() const noexcept { return rows_; }

  /// The number of packages at the construction. What is appended to the list later is not read.
  std::size_t size() const noexcept { return size_; }

  /// The name of the package at `index`.
  std::u16string_view nameAt(std::size_t index) const {
    return rows_ != nullptr ? rowAt(index).name.view() : elementAt(index).name().view();
  }

  /// The package at `index` of a list of rows.
  const mf::zero::PackageRow& rowAt(std::size_t index) const noexcept {
    return rows_->at<mf::zero::PackageRow>(index);
  }

  /// The package at `index` of a list of elements.
  const typename Pkg::Impl& elementAt(std::size_t index) const { return elements_->readAt(index); }

  /// Whether each name is greater than the one before. Linear time for elements.
  bool isAscending() const {
    if (rows_ != nullptr) {
      return rows_->ascending;
    }
    for (std::size_t index = 1; index < size(); ++index) {
      if (nameAt(index - 1) >= nameAt(index)) {
        return false;
      }
    }
    return true;
  }

 private:
  const mf::zero::RowList* rows_;
  const mf::zero::OwnedCollection<Pkg>* elements_ = nullptr;
  std::size_t size_;
};

}  // namespace install::update_metadata_parser
