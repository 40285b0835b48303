#pragma once

#include <cstddef>
#include <optional>
#include <set>
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
  /// Reads the file, or standard input, and has the library load it. The library's exceptions pass
  /// through.
  LoadedDocument(const std::string& file, const input::GivenLimits& limits,
                 terminal::ProgressLine& progress);

  /// The same for a document that was read already.
  LoadedDocument(const std::string& file, std::string text, const input::GivenLimits& limits = {});

  const DocumentHead& head() const { return head_; }

  /// Calls `visit` for each place: those of the model, in its order, then those that are not read.
  ///
  /// \param onlyKey  leaves out packages with other keys that products can name
  ///
  /// Nothing is stored of a place, so memory is linear in the document. Exceptions of `visit` and
  /// of the product data pass through.
  void forEachPlace(const ProductLookUp& products, const VisitPlace& visit,
                    std::optional<std::string_view> onlyKey = std::nullopt) const;

  /// The package keys and the paths of files to delete that have at most so many bytes.
  std::set<std::string> shortNames(std::size_t bytes) const;

  /// The names of all products that are read.
  std::vector<std::string_view> productNames() const;

  /// How many products the library's model has, if the product data contain none of them; otherwise
  /// 0. Exceptions of the product data pass through.
  std::size_t unknownProducts(const ProductLookUp& products) const;

  /// The files of Place::files, in the order of the text, with duplicates. Empty without a list.
  std::vector<std::string_view> filesOf(std::optional<std::size_t> list) const;

  /// The first line on which they have a path; nothing if they do not.
  std::optional<std::size_t> lineOfFile(std::optional<std::size_t> list,
                                        std::string_view path) const;

 private:
  std::string text_;
  DocumentHead head_;  // loaded before the rest takes memory
  install::update_metadata_parser::diagnosis::source::SourceTree tree_;
  install::update_metadata_parser::diagnosis::SourceDocument document_;
  install::update_metadata_parser::diagnosis::source::LineIndex lines_;
};

}  // namespace update_metadata_tool::places
