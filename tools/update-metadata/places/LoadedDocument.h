#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "diagnosis/SourceDocument.h"
#include "diagnosis/source/LineIndex.h"
#include "diagnosis/source/SourceTree.h"
#include "input/DocumentLimits.h"
#include "places/Place.h"
#include "places/ProductLookUp.h"
#include "summary/Contents.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::places {

/// What a document says about itself.
struct DocumentHead {
  std::string file;  ///< as the user named it
  summary::Release base;
  summary::Release target;
  int updateLevel = 0;
  std::u16string arch;
  std::string sha256;
};

/// A document that the library loads, as it is written.
class LoadedDocument {
 public:
  /// Reads the file, or standard input, and has the library load it, without a model. The library's
  /// exceptions pass through.
  LoadedDocument(const std::string& file, const input::GivenLimits& limits,
                 terminal::ProgressLine& progress);

  /// The same for a document that was read already.
  LoadedDocument(const std::string& file, std::string text);

  const DocumentHead& head() const { return head_; }

  /// Calls `visit` for each place: those of the model, in its order, then those that are not read.
  ///
  /// Nothing is stored of a place, so memory is linear in the document. Exceptions of `visit` and
  /// of the product data pass through.
  void forEachPlace(const ProductLookUp& products, const VisitPlace& visit) const;

  /// The names of all products that are read.
  std::vector<std::string_view> productNames() const;

  /// The files that a place lists, in its order, with duplicates. Empty if it is not of that side.
  std::vector<std::string_view> filesOf(const Place& place) const;

 private:
  DocumentHead head_;
  std::string text_;
  install::update_metadata_parser::diagnosis::source::SourceTree tree_;
  install::update_metadata_parser::diagnosis::SourceDocument document_;
  install::update_metadata_parser::diagnosis::source::LineIndex lines_;
};

}  // namespace update_metadata_tool::places
