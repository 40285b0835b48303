#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace update_metadata_tool::lint {

/// Names of more bytes resemble none.
constexpr std::size_t kLongestResembling = 64;

/// The most edits after which a name still resembles another: a quarter of its bytes, but one of a
/// name of up to four and two of a longer one.
std::size_t mostEdits(std::string_view name);

/// Finds the name among known ones that a wrong name resembles most.
///
/// A document may have any number of both, so all look-ups together take a limited time: once it is
/// used up, nothing is found any more.
class NearestNames {
 public:
  NearestNames() = default;
  explicit NearestNames(std::vector<std::string_view> names) : names_(std::move(names)) {}

  /// The nearest of the names within `most` edits, the first of several; mostEdits() as a rule.
  std::optional<std::string_view> find(std::string_view name, std::size_t most);

 private:
  std::vector<std::string_view> names_;
  std::size_t steps_ = 0;  ///< that look-ups have taken
};

}  // namespace update_metadata_tool::lint
