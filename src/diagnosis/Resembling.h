#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace install::update_metadata_parser::diagnosis {

/// A name of more bytes resembles no other name.
constexpr std::size_t kLongestResembling = 64;

/// The most edits with which a name still resembles another: one for up to four bytes, two for up
/// to eleven, then a quarter of its bytes.
std::size_t mostEdits(std::string_view name);

/// Finds the known name that a wrong name resembles most.
///
/// All look-ups together take a limited time, because a document can have many names. Once the
/// limit is reached, nothing is found.
class NearestNames {
 public:
  /// Knows no name.
  NearestNames() = default;

  /// Knows these names, whose bytes must outlive it.
  explicit NearestNames(std::vector<std::string_view> names) : names_(std::move(names)) {}

  /// The nearest of the names within `most` edits, usually mostEdits(); of several, the first.
  std::optional<std::string_view> find(std::string_view name, std::size_t most);

 private:
  std::vector<std::string_view> names_;
  std::size_t steps_ = 0;  ///< taken by look-ups so far
};

}  // namespace install::update_metadata_parser::diagnosis
