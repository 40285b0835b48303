#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bench::generate {

/// The input of a family for comparison with other libraries: how many units of how many bytes
/// each.
struct BenchmarkSize {
  std::string_view unit;  ///< in the singular
  std::size_t unitBytes = 1;
  std::size_t count = 0;  ///< 0: the family is not compared with other libraries
};

enum class FamilyKind {
  text,       ///< read as JSON, or rejected
  document,   ///< loaded and queried
  catalogue,  ///< opened as a table of products, each of which is looked up
};

/// A family of inputs of any size that would cost a careless program more than their share.
struct Family {
  std::string_view name;
  std::string_view description;

  /// Makes the input. Twice the size means about twice the work: bytes of the text, elements of the
  /// model and entries of the answers together.
  std::string (*make)(std::size_t size);

  std::size_t sizeToStart = std::size_t{32} << 10;  ///< the smallest size whose growth is measured
  std::size_t megabyte = 1'000'000;  ///< the size that makes a text of about 10^6 bytes
  BenchmarkSize benchmark = {};
  bool hasComments = false;  ///< read with comments allowed
  FamilyKind kind = FamilyKind::text;
};

/// JSON texts that are hard on a reader; the size is about the number of bytes.
const std::vector<Family>& hostileTexts();

/// Documents that describe far more elements than they have bytes, and similar ones.
const std::vector<Family>& hostileDocuments();

/// Tables of products; the size is the number of rows.
const std::vector<Family>& hostileCatalogues();

/// All of these families, in that order.
std::vector<Family> allFamilies();

}  // namespace bench::generate
