#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/PlainDocument.h"

namespace test_support {

/// Computes the totals of products from the plain tables of a document, with only sets and maps, to
/// compare them with the totals that the command prints.
class PlainTotals {
 public:
  struct Sums {
    std::size_t components = 0;
    std::size_t packagesToDelete = 0;
    std::size_t packagesToExtract = 0;
    std::int64_t bytesToFetch = 0;
    std::int64_t bytesUnpacked = 0;
    std::int64_t bytesDeleted = 0;
  };

  using SizesByKey = std::map<std::string, PlainDocument::Sizes>;

  /// The document must outlive this.
  explicit PlainTotals(const PlainDocument& document);

  /// The packages that some products delete or extract, by key. The sizes are those of the first
  /// package with the key, in the order of the document's products.
  SizesByKey toDelete(const std::vector<std::string>& products) const;
  SizesByKey toExtract(const std::vector<std::string>& products) const;

  /// The totals of some products. Each package key counts once.
  Sums of(const std::vector<std::string>& products) const;

  /// The names of the products that list a component, which are those that the library reads.
  std::vector<std::string> products() const;

  /// The number of files to delete; each path of a package counts once.
  std::size_t files() const;

 private:
  static SizesByKey pick(const SizesByKey& all, const SizesByKey& named);

  const PlainDocument& document_;
  SizesByKey allToDelete_;
  SizesByKey allToExtract_;
};

}  // namespace test_support
