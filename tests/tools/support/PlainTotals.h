#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/PlainDocument.h"

namespace test_support {

/// Adds up what products name from the plain tables of a document, with sets and maps and nothing
/// else: a second opinion on the totals that the command tells.
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

  /// The document has to stay where it is.
  explicit PlainTotals(const PlainDocument& document);

  /// The packages that some products delete, or extract, by key: the first of each key in the order
  /// of the document's products gives the sizes.
  SizesByKey toDelete(const std::vector<std::string>& products) const;
  SizesByKey toExtract(const std::vector<std::string>& products) const;

  /// What some products name in all. Each package key counts once.
  Sums of(const std::vector<std::string>& products) const;

  /// The names of the products that name a component: those that the library knows of.
  std::vector<std::string> products() const;

  /// The number of files to delete, each path of a package once.
  std::size_t files() const;

 private:
  static SizesByKey pick(const SizesByKey& all, const SizesByKey& named);

  const PlainDocument& document_;
  SizesByKey allToDelete_;
  SizesByKey allToExtract_;
};

}  // namespace test_support
