#pragma once

#include <functional>
#include <optional>
#include <string>

#include "lint/Finding.h"

namespace update_metadata_tool::lint {

struct LintOptions {
  /// Where the product data are, to look the document's products up in; not looked up without it.
  std::optional<std::u16string> productData;

  /// Called again and again while a document is checked, if there is something to call.
  std::function<void()> onProgress;
};

/// Finds every fault of one document and asks the library what it will do with it.
///
/// At their default severities, and without product data, the findings hold an error exactly if the
/// library refuses the document.
///
/// \param file  the path as the user named it, UTF-8; it is not opened
/// \param text  the document's bytes
///
/// Memory is linear in the text; time is n log n in it, and a small multiple of the library's load.
FileReport lintDocument(std::string file, std::string text, const LintOptions& options);

}  // namespace update_metadata_tool::lint
