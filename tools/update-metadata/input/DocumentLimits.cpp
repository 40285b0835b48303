#include "input/DocumentLimits.h"

#include "input/DocumentText.h"

namespace update_metadata_tool::input {

using install::update_metadata_parser::Limits;

Limits limitsOf(const std::string& file, const GivenLimits& given) {
  constexpr std::uint64_t kKeyUnits = Limits().keyUnits / Limits().packages;
  Limits limits;
  if (file != kStandardInput) {
    limits = {kUnlimited, kUnlimited, kUnlimited, kUnlimited};
  }
  if (given.bytes) {
    limits.bytes = *given.bytes;
  }
  if (given.packages) {
    limits.packages = *given.packages;
    limits.files = *given.packages;
    limits.keyUnits =
        *given.packages > kUnlimited / kKeyUnits ? kUnlimited : *given.packages * kKeyUnits;
  }
  return limits;
}

}  // namespace update_metadata_tool::input
