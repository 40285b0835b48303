#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bench::generate {

/// What a family is measured by beside other libraries: some number of units of so many bytes each.
struct BenchmarkSize {
  std::string_view unit;  ///< in the singular
  std::size_t unitBytes = 1;
  std::size_t count = 0;  ///< 0: the family is not measured beside other libraries
};

enum class FamilyKind {
  text,       ///< it is read as JSON, or rejected
  document,   ///< it is loaded and queried
  catalogue,  ///< it is opened as a table of products, and each of them is looked up
};

/// A family of inputs of any size for which a careless program would need more than its share.
struct Family {
  std::string_view name;
  std::string_view description;

  /// Makes the input. Twice the size makes about twice as much work: bytes of the text, elements of
  /// the model and entries of the answers together.
  std::string (*make)(std::size_t size);

  std::size_t sizeToStart = std::size_t{32} << 10;  ///< the smallest size whose growth is measured
  std::size_t megabyte = 1'000'000;  ///< the size that makes a text of about 10^6 bytes
  BenchmarkSize benchmark = {};
  bool hasComments = false;  ///< it is read with comments allowed
  FamilyKind kind = FamilyKind::text;
};

/// JSON texts that are hard on a reader; a size is about the bytes of the text.
const std::vector<Family>& hostileTexts();

/// Documents that describe far more elements than they have bytes, and their like.
const std::vector<Family>& hostileDocuments();

/// Tables of products; a size is their rows.
const std::vector<Family>& hostileCatalogues();

/// All of these, in that order.
std::vector<Family> allFamilies();

}  // namespace bench::generate
