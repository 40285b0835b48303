#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bench::growth {

/// A family of inputs of any size for which a careless program would need more than its share.
///
/// One that is neither a document nor a table of products is a JSON text.
struct Family {
  std::string_view name;
  std::string_view description;
  bool isDocument;          ///< it is loaded and asked
  bool hasComments;         ///< it is read with comments allowed
  std::size_t sizeToStart;  ///< the smallest size whose growth is looked at
  std::size_t megabyte;     ///< the size that makes a text of about 10^6 bytes

  /// Makes the input. Twice the size makes about twice as much work: bytes of the text, elements of
  /// the model and entries of the answers together.
  std::string (*make)(std::size_t size);

  bool isCatalogue = false;  ///< it is opened as a table of products, and each of them is looked up
};

const std::vector<Family>& families();

/// The family of that name; null if there is none.
const Family* findFamily(std::string_view name);

}  // namespace bench::growth
