#include "diff/GrowthLimit.h"

#include <charconv>
#include <string>
#include <system_error>

namespace update_metadata_tool::diff {
namespace {

using summary::ByteSum;

constexpr std::size_t kDecimals = 4;  // a ten-thousandth of a percent is a millionth
constexpr std::int64_t kLargestShare = 1'000'000 * std::int64_t{10'000};

std::optional<std::int64_t> parseDigits(std::string_view text) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos) {
    return std::nullopt;
  }
  std::int64_t number = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  return parsed.ec == std::errc() ? std::optional(number) : std::nullopt;
}

// Parses a percentage, with or without decimals, into millionths.
std::optional<std::int64_t> parsePercent(std::string_view text) {
  const std::size_t point = text.find('.');
  std::string digits(text.substr(0, point));
  std::string_view decimals;
  if (point != std::string_view::npos) {
    decimals = text.substr(point + 1);
    if (digits.empty() || decimals.empty() || decimals.size() > kDecimals) {
      return std::nullopt;
    }
  }
  digits += decimals;
  digits.append(kDecimals - decimals.size(), '0');
  const auto millionths = text.empty() ? std::nullopt : parseDigits(digits);
  return millionths && *millionths <= kLargestShare ? millionths : std::nullopt;
}

}  // namespace

std::optional<GrowthLimit> GrowthLimit::parse(std::string_view text) {
  const bool isShare = !text.empty() && text.back() == '%';
  const auto number = isShare ? parsePercent(text.substr(0, text.size() - 1)) : parseDigits(text);
  return number ? std::optional(GrowthLimit(isShare, *number)) : std::nullopt;
}

Growth GrowthLimit::measure(const ByteSum& before, const ByteSum& after) const {
  ByteSum allowed;
  if (!isShare_) {
    allowed = ByteSum(number_);
  } else if (!before.isNegative()) {
    allowed = summary::takeMillionths(static_cast<std::uint64_t>(number_), before);
  }
  return {after - before, allowed};
}

}  // namespace update_metadata_tool::diff
