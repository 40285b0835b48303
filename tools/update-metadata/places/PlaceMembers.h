#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "places/Place.h"

namespace update_metadata_tool::places {

/// The word for a verdict; nothing if the answer never contains packages of the side.
inline std::optional<std::string_view> toWord(const Verdict& verdict) {
  return verdict.use == Use::kNotAsked ? std::nullopt
                                       : std::optional<std::string_view>(nameOf(verdict.use));
}

/// Writes the members of a place, in a fixed order. `writer` has a member(name, value), as
/// output::JsonWriter does.
template <class Writer>
void writeMembers(const Place& place, Writer& writer) {
  using Text = std::optional<std::string_view>;
  const ProductOfPlace* const product = place.product;
  writer.member("side", std::string_view(nameOf(place.side)));
  writer.member("product", product != nullptr ? Text(product->name) : Text());
  writer.member("baseCode",
                product != nullptr && product->baseCode ? Text(*product->baseCode) : Text());
  writer.member("component", place.component);
  writer.member("package", place.package);
  writer.member("key", place.package ? std::optional(keyOf(place)) : std::nullopt);
  writer.member("size", place.size);
  writer.member("uncompressedBytes", place.uncompressedBytes);
  writer.member("line", place.line);
  writer.member("namingLine", place.namingLine);
  writer.member("inAllProducts", toWord(place.verdicts.allProducts));
  writer.member("inOneProduct", toWord(place.verdicts.oneProduct));
  writer.member("inSizes", toWord(place.verdicts.sizes));
  writer.member("inFiles", toWord(place.verdicts.files));
}

}  // namespace update_metadata_tool::places
