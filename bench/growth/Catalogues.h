#pragma once

#include <cstddef>
#include <string>

namespace bench::growth {

// Tables of products. The base code of a row is its name, and so is its controlling product.

/// Names and numbers that nobody has chosen.
std::string productRows(std::size_t rows);

/// Names that std::hash does not distinguish.
std::string rowsOfCollidingNames(std::size_t rows);

/// Numbers that share a bucket of an unordered container.
std::string rowsOfCollidingNumbers(std::size_t rows);

}  // namespace bench::growth
