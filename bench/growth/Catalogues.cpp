#include "growth/Catalogues.h"

#include <cstdint>
#include <vector>

#include "fl/i18n.h"
#include "support/HashCollisions.h"

namespace bench::growth {
namespace {

using test_support::HashCollisions;

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

}  // namespace

std::string productRows(std::size_t rows) {
  return table(rows, plainName, plainNumber);
}

std::string rowsOfCollidingNames(std::size_t rows) {
  const std::vector<std::u16string> names = HashCollisions::names(rows);
  return table(
      rows, [&](std::size_t row) { return fl::i18n::to_string(names[row]); }, plainNumber);
}

std::string rowsOfCollidingNumbers(std::size_t rows) {
  const std::vector<std::uint32_t> numbers = HashCollisions::numbers(rows);
  return table(rows, plainName, [&](std::size_t row) { return numbers[row]; });
}

}  // namespace bench::growth
