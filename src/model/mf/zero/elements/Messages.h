// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "foundation/core/except.h"
#include "foundation/core/export.h"

namespace mf::zero {

/// Message: a value is not a model element of the required class.
struct FOUNDATION_EXPORT CannotCastIncompatibleTypes {
  static constexpr const char* kCatalogue = "mf0:messages";           ///< the catalogue of the text
  static constexpr const char* kKey = "CannotCastIncompatibleTypes";  ///< the key in the catalogue

  /// Both, joined by a colon.
  static constexpr const char* kId = "mf0:messages:CannotCastIncompatibleTypes";

  std::u16string typeName;  ///< qualified name of the offending type

  /// The English text, for logs.
  std::string text() const;
};

/// Message: an element of one model cannot be put into a tree of another.
struct FOUNDATION_EXPORT IncompatibleModels {
  static constexpr const char* kCatalogue = "mf0:messages";  ///< the catalogue of the text
  static constexpr const char* kKey = "IncompatibleModels";  ///< the key in the catalogue

  /// Both, joined by a colon.
  static constexpr const char* kId = "mf0:messages:IncompatibleModels";

  std::u16string typeName;  ///< qualified name of the element's type

  /// The English text, for logs.
  std::string text() const;
};

/// Throws a message as foundation::core::except::Exception of its type.
[[noreturn]] FOUNDATION_EXPORT void reportException(CannotCastIncompatibleTypes message);

/// Throws a message as foundation::core::except::Exception of its type.
[[noreturn]] FOUNDATION_EXPORT void reportException(IncompatibleModels message);

}  // namespace mf::zero

extern template class foundation::core::except::Exception<mf::zero::CannotCastIncompatibleTypes>;
extern template class foundation::core::except::Exception<mf::zero::IncompatibleModels>;
