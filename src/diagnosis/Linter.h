#pragma once

#include <functional>
#include <optional>
#include <string>

#include "diagnosis/Finding.h"

namespace install::update_metadata_parser::diagnosis {

struct LintOptions {
  /// The product data in which the document's products are looked up, if any.
  std::optional<std::u16string> productData;

  /// Called repeatedly while a document is checked, unless it is empty.
  std::function<void()> onProgress;
};

/// Finds every problem in one document and has the library load it.
///
/// At the default severities and without product data, the findings contain an error exactly if the
/// library rejects the document.
///
/// \param file  the path as the user gave it, UTF-8; it is not opened
/// \param text  the document's bytes
///
/// Memory is linear in the text; time is n log n in it, and a small multiple of the library's load.
FileReport lintDocument(std::string file, std::string text, const LintOptions& options);

}  // namespace install::update_metadata_parser::diagnosis
