#include <cstdint>
#include <vector>

#include "fl/i18n.h"
#include "generate/Family.h"
#include "support/HashCollisions.h"

namespace bench::generate {
namespace {

using test_support::HashCollisions;

// A table of products. The base code of each row equals its name, and so does its controlling
// product.
template <class Name, class Number>
std::string table(std::size_t rows, const Name& name, const Number& number) {
  std::string text = "base code\tname\tnumber\tcontrolling product\n";
  for (std::size_t row = 0; row < rows; ++row) {
    const std::string key = name(row);
    text.append(key).append("\t").append(key).append("\t");
    text.append(std::to_string(number(row))).append("\t").append(key).append("\n");
  }
  return text;
}

std::string plainName(std::size_t row) {
  return "product " + std::to_string(row);
}

std::size_t plainNumber(std::size_t row) {
  return row;
}

// Names and numbers that nothing makes collide.
std::string productRows(std::size_t rows) {
  return table(rows, plainName, plainNumber);
}

// Names that std::hash does not distinguish.
std::string rowsOfCollidingNames(std::size_t rows) {
  const std::vector<std::u16string> names = HashCollisions::names(rows);
  return table(
      rows, [&](std::size_t row) { return fl::i18n::to_string(names[row]); }, plainNumber);
}

// Numbers that share a bucket of an unordered container.
std::string rowsOfCollidingNumbers(std::size_t rows) {
  const std::vector<std::uint32_t> numbers = HashCollisions::numbers(rows);
  return table(rows, plainName, [&](std::size_t row) { return numbers[row]; });
}

Family catalogue(std::string_view name, std::string_view description,
                 std::string (*make)(std::size_t), std::size_t megabyte) {
  constexpr std::size_t kRowsToStart = 500;
  return {name, description, make, kRowsToStart, megabyte, {}, false, FamilyKind::catalogue};
}

}  // namespace

const std::vector<Family>& hostileCatalogues() {
  static const std::vector<Family> all = {
      catalogue("product-rows", "products of a catalogue", productRows, 23'000),
      catalogue("colliding-names", "products whose names share one hash", rowsOfCollidingNames,
                10'000),
      catalogue("colliding-numbers", "products whose numbers share one bucket",
                rowsOfCollidingNumbers, 23'000),
  };
  return all;
}

}  // namespace bench::generate
