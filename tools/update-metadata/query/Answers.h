#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "summary/Release.h"

namespace update_metadata_tool::query {

/// What the user asks: which document, against which product data, for which product.
struct Question {
  std::u16string file;

  /// Where the product data are. Without it a product's name stands for its base code.
  std::optional<std::u16string> productData;

  /// The one product that the packages to delete and to extract are asked for; all without it.
  std::optional<std::u16string> baseCode;
};

using PackageKeys = std::set<std::u16string>;
using PackageKeysByBaseCode = std::map<std::u16string, PackageKeys>;

/// The keys of one product if the question names one, else those of every product.
using Packages = std::variant<PackageKeysByBaseCode, PackageKeys>;

/// Everything that the library answers about one document, in its own types and order.
struct Answers {
  summary::Release base;
  summary::Release target;
  int targetUpdateLevel = 0;
  Packages packagesToDelete;
  Packages packagesToExtract;

  /// Size, then unpacked size, in bytes.
  std::map<std::u16string, std::pair<std::int64_t, std::int64_t>> sizesToExtract;

  /// Files to delete, then the package's size in bytes.
  std::map<std::u16string, std::pair<std::set<std::u16string>, std::int64_t>> filesToDelete;
};

/// A document that the library has loaded.
struct LoadedUpdate {
  std::shared_ptr<install::update_metadata_parser::UpdateMetaData> update;
  std::shared_ptr<install::update_metadata_parser::UpdateMetaDataHandler> handler;  ///< behind it
};

/// Loads the document of `question`, which may be standard input. Whatever the library throws
/// passes through.
LoadedUpdate loadUpdate(const Question& question);

/// Asks everything about a loaded document. The library's and the product catalogue's exceptions
/// pass through.
///
/// \pre `update` comes from loadUpdate() with the same question
Answers gatherAnswers(const install::update_metadata_parser::UpdateMetaData& update,
                      const Question& question);

/// What to note if the question names a base code that no product of the document has: that, and
/// the nearest ones. Empty otherwise. Exceptions pass through as above.
///
/// \pre `loaded` comes from loadUpdate() and `answers` from gatherAnswers(), with the same question
std::string noteOnBaseCode(const LoadedUpdate& loaded, const Answers& answers,
                           const Question& question);

}  // namespace update_metadata_tool::query
