#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "summary/Contents.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::summary {

class SummaryHandler;

/// What the user names: a document, and the product data to read it with.
struct DocumentSource {
  std::u16string file;  ///< or what stands for standard input
  std::optional<std::u16string> productData;

  /// The document's bytes, if they were read already: the file is not opened then.
  std::optional<std::string> text = std::nullopt;
};

/// A document that the library has loaded and that can be asked.
class Document {
 public:
  /// Loads the document. What the library throws passes through. `progress` is told how that goes,
  /// and how the questions go; it has to outlive the document.
  explicit Document(DocumentSource source,
                    terminal::ProgressLine& progress = terminal::noProgress());

  /// What it was loaded from, without the text.
  const DocumentSource& source() const { return source_; }

  /// Gathers everything that the document says from the library's model. Base codes come from the
  /// product data, if there are any; their exceptions pass through.
  ///
  /// O(n log n) in the names of products, components and packages, and memory in proportion to the
  /// document: what products share is kept once.
  Contents gatherContents() const;

  /// The name of the product with that base code; empty if the product data do not know it.
  ///
  /// \pre there are product data
  std::u16string findProductName(const std::u16string& baseCode) const;

 private:
  DocumentSource source_;
  terminal::ProgressLine& progress_;
  std::shared_ptr<SummaryHandler> handler_;
};

/// Loads a document and has `ask` ask it.
///
/// Returns false if the one or the other threw, after a complaint on `err`: the first line is the
/// exception's text, escaped for a terminal, the second one says which file it is about and what to
/// do.
/// `progress` is told how it goes, and makes room for the complaint.
bool askDocument(const DocumentSource& source, const std::function<void(const Document&)>& ask,
                 std::ostream& err, terminal::ProgressLine& progress = terminal::noProgress());

/// Loads a document and gathers its contents; nothing, after a complaint on `err` as above, if that
/// failed.
std::optional<Contents> readContents(const DocumentSource& source, std::ostream& err,
                                     terminal::ProgressLine& progress = terminal::noProgress());

}  // namespace update_metadata_tool::summary
