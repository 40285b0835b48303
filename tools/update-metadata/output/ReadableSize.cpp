#include "output/ReadableSize.h"

#include <array>
#include <charconv>

namespace update_metadata_tool::output {
namespace {

constexpr const char* kUnits[] = {"KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
constexpr double kUnitStep = 1024.0;

// The smallest magnitude that rounds to 1024.0 and is shown in the next unit instead.
constexpr double kUnitEnd = 1023.95;

std::string toOneDecimal(double number) {
  std::array<char, 32> digits{};
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                     std::chars_format::fixed, 1);
  return std::string(digits.data(), written.ptr);
}

bool needsUnit(std::int64_t bytes) {
  return bytes <= -1024 || bytes >= 1024;
}

// \pre needsUnit(bytes)
std::string inLargestUnit(std::int64_t bytes) {
  double magnitude = static_cast<double>(bytes) / kUnitStep;
  const char* const* unit = kUnits;
  while (magnitude >= kUnitEnd || magnitude <= -kUnitEnd) {
    magnitude /= kUnitStep;
    ++unit;
  }
  return toOneDecimal(magnitude) + ' ' + *unit;
}

}  // namespace

std::string toReadableSize(std::int64_t bytes) {
  std::string shown = std::to_string(bytes) + (bytes == 1 || bytes == -1 ? " byte" : " bytes");
  if (needsUnit(bytes)) {
    shown += " (" + inLargestUnit(bytes) + ')';
  }
  return shown;
}

std::string toShortSize(std::int64_t bytes) {
  return needsUnit(bytes) ? inLargestUnit(bytes) : std::to_string(bytes) + " B";
}

}  // namespace update_metadata_tool::output
