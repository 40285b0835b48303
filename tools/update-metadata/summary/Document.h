#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "input/DocumentLimits.h"
#include "summary/Contents.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::summary {

class SummaryHandler;

/// A document and its product data, as the user named them.
struct DocumentSource {
  std::u16string file;  ///< or kStandardInput
  std::optional<std::u16string> productData;
  input::GivenLimits limits = {};
  bool needsDigest = false;  ///< whether the contents are to have the digest

  /// The document's bytes, if they were read already; the file is not opened then.
  std::optional<std::string> text = std::nullopt;
};

/// A document that the library has loaded.
class Document {
 public:
  /// Loads the document. The library's exceptions pass through. Loading and querying update
  /// `progress`, which must outlive the document.
  explicit Document(DocumentSource source,
                    terminal::ProgressLine& progress = terminal::noProgress());

  /// The source of the document, without the text.
  const DocumentSource& source() const { return source_; }

  /// Gathers the contents from the library's model, and base codes from the product data, if any,
  /// whose exceptions pass through.
  ///
  /// O(n log n) in the names of products, components and packages. Memory is linear in the
  /// document: what products share is stored once.
  Contents gatherContents() const;

  /// The name of the product with that base code; empty if the product data do not contain it.
  ///
  /// \pre there are product data
  std::u16string findProductName(const std::u16string& baseCode) const;

 private:
  DocumentSource source_;
  terminal::ProgressLine& progress_;
  std::shared_ptr<SummaryHandler> handler_;
  std::string sha256_;
};

/// Loads a document and calls `query` with it. Failures are reported as by loadAndQuery().
bool queryDocument(const DocumentSource& source, const std::function<void(const Document&)>& query,
                   std::ostream& err, terminal::ProgressLine& progress = terminal::noProgress());

/// Loads a document and gathers its contents. Nothing, after a message, if that fails.
std::optional<Contents> readContents(const DocumentSource& source, std::ostream& err,
                                     terminal::ProgressLine& progress = terminal::noProgress());

}  // namespace update_metadata_tool::summary
