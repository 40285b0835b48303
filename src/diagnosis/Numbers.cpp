#include "diagnosis/Numbers.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "diagnosis/Words.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

constexpr double kTwoTo53 = 9007199254740992.0;
constexpr double kTwoTo63 = 9223372036854775808.0;

// Compression rarely makes a package that many times smaller.
constexpr std::int64_t kLargestRatio = 1'000;
constexpr std::int64_t kLargestPlausibleSize = std::int64_t{1} << 36;  // 64 GiB

// The next integer, which no double represents, is read as 2^53 itself.
bool isBeyondTwoTo53(double number, std::string_view written) {
  const std::size_t digits = written.find_first_not_of("-0");
  return std::abs(number) > kTwoTo53 ||
         (std::abs(number) == kTwoTo53 && written.substr(digits) == "9007199254740993");
}

// Whether a number, as it is written, is not an integer, even if the nearest double is one.
bool hasFraction(std::string_view written) {
  const std::size_t exponentSign = std::min(written.find_first_of("eE"), written.size());
  const std::string_view mantissa = written.substr(0, exponentSign);
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t lastDigit = mantissa.find_last_not_of("0.-");
  if (lastDigit == std::string_view::npos) {
    return false;  // zero
  }
  // The decimal places up to the last digit that is not 0.
  const auto places =
      static_cast<double>(lastDigit) - static_cast<double>(point) + (lastDigit > point ? 0.0 : 1.0);
  // An exponent of any length can be read as a double, which may be infinite.
  const double exponent =
      exponentSign == written.size()
          ? 0.0
          : std::strtod(std::string(written.substr(exponentSign + 1)).c_str(), nullptr);
  return places > exponent;
}

// Writes a number as the library reads it.
Fix rewriteNumber(const source::SourceTree& tree, std::size_t number, std::int64_t read) {
  return {tree[number].begin, tree.written(number).size(), std::to_string(read), true};
}

}  // namespace

std::optional<std::int64_t> checkSize(const SourceDocument& document, std::size_t number,
                                      const char* name, const DescribeItem& item,
                                      FindingList& findings) {
  const source::SourceTree& tree = document.tree();
  const double written = tree.number(number);
  const std::int64_t read = tree.byteCount(number);
  bool isSound = true;
  const auto report = [&](Rule rule, const std::string& message, const char* advice,
                          std::optional<Fix> fix = {}) {
    isSound = false;
    findings.add(rule, tree, number,
                 {'\'' + std::string(name) + "' " + message, advice, item(), {}, std::move(fix)});
  };
  if (!(written >= -kTwoTo63 && written < kTwoTo63)) {
    report(Rule::kSizeOutOfRange, "does not fit in 64 bits and is read as " + std::to_string(read),
           "write a number of bytes below 9223372036854775808");
    return std::nullopt;
  }
  if (hasFraction(tree.written(number))) {
    report(Rule::kFractionalSize, "has a fraction and is read as " + std::to_string(read),
           "write a whole number of bytes", rewriteNumber(tree, number, read));
  }
  if (read < 0) {
    report(Rule::kNegativeSize, "is negative and is read as " + std::to_string(read),
           "write 0 or a positive number of bytes");
  }
  if (isBeyondTwoTo53(written, tree.written(number))) {
    report(
        Rule::kImpreciseSize,
        "is beyond 2^53, where not every integer is exact, and is read as " + std::to_string(read),
        "check the number");
  }
  return isSound ? std::optional(read) : std::nullopt;
}

void checkSizePair(const SourceDocument& document, ReadSize packed, ReadSize unpacked,
                   const DescribeItem& item, FindingList& findings) {
  if (unpacked.bytes < packed.bytes) {
    findings.add(Rule::kUnpackedSmaller, document.tree(), unpacked.node,
                 {"the package is smaller unpacked, " + std::to_string(unpacked.bytes) +
                      " bytes, than packed, " + std::to_string(packed.bytes) + " bytes",
                  "check whether the two sizes were swapped", item()});
  }
  // A packed size of 0 means that it is not known.
  const bool isPlausible = packed.bytes > 0 && packed.bytes < kLargestPlausibleSize &&
                           unpacked.bytes < kLargestPlausibleSize;
  if (isPlausible && unpacked.bytes > packed.bytes * kLargestRatio) {
    findings.add(Rule::kKilobyteSize, document.tree(), packed.node,
                 {"'size' may be in kilobytes: 'uncompressedBytes' is more than 1,000 times as "
                  "large",
                  "write both sizes in bytes", item()});
  }
}

void checkUpdateLevel(const SourceDocument& document, std::size_t number, FindingList& findings) {
  const source::SourceTree& tree = document.tree();
  const double written = tree.number(number);
  // The library's handler determines the level that is read back.
  const UpdateMetaDataHandler handler;
  handler.initializeReleaseData();
  handler.initializeTargetRelease();
  handler.setTargetUpdateLevelForQorv(tree.updateLevel(number));
  const int read = handler.getTargetUpdateLevelForQorv();
  if (static_cast<double>(read) != written || hasFraction(tree.written(number))) {
    findings.add(Rule::kUpdateLevel, tree, number,
                 {"the update level is read back as " + std::to_string(read),
                  "write an integer from -128 to 127",
                  "target release",
                  {},
                  rewriteNumber(tree, number, read)});
  }
}

}  // namespace install::update_metadata_parser::diagnosis
