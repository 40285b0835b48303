#include "mf/zero/elements/Messages.h"

#include <utility>

template class foundation::core::except::Exception<mf::zero::CannotCastIncompatibleTypes>;
template class foundation::core::except::Exception<mf::zero::IncompatibleModels>;

namespace mf::zero {
namespace {

// Qualified type names are ASCII; anything else is shown as a question mark.
std::string toAscii(const std::u16string& name) {
  std::string text;
  text.reserve(name.size());
  for (const char16_t unit : name) {
    text.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
  }
  return text;
}

}  // namespace

std::string CannotCastIncompatibleTypes::text() const {
  return "cannot cast incompatible types: " + toAscii(typeName);
}

std::string IncompatibleModels::text() const {
  return "element of another model: " + toAscii(typeName);
}

void reportException(CannotCastIncompatibleTypes message) {
  throw foundation::core::except::Exception<CannotCastIncompatibleTypes>(std::move(message));
}

void reportException(IncompatibleModels message) {
  throw foundation::core::except::Exception<IncompatibleModels>(std::move(message));
}

}  // namespace mf::zero
