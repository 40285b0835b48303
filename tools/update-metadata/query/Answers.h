#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>

#include "input/DocumentLimits.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "summary/Contents.h"

namespace update_metadata_tool::query {

/// What the user asks about.
struct Question {
  std::u16string file;

  /// Location of the product data. Without it, each product's name is used as its base code.
  std::optional<std::u16string> productData;

  /// The product whose packages to delete and to extract are wanted; all products without it.
  std::optional<std::u16string> baseCode;

  input::GivenLimits limits = {};

  bool needsDigest = false;  ///< whether the answers are to have the digest
};

using PackageKeys = std::set<std::u16string>;
using PackageKeysByBaseCode = std::map<std::u16string, PackageKeys>;

/// The keys of one product if the question names one, otherwise those of every product.
using Packages = std::variant<PackageKeysByBaseCode, PackageKeys>;

/// All answers of the library about one document, in its types and order.
struct Answers {
  Question question;
  std::string sha256;  ///< of the document, if it was requested
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
  std::string sha256;  ///< if the question needs it
  std::shared_ptr<install::update_metadata_parser::UpdateMetaData> update;
  std::shared_ptr<install::update_metadata_parser::UpdateMetaDataHandler> handler;  ///< behind it
};

/// Loads the document of `question`, which may be standard input. Exceptions of the library pass
/// through.
LoadedUpdate loadUpdate(const Question& question);

/// Runs all queries on a loaded document. Exceptions of the library and of the catalogue pass
/// through.
///
/// \pre `update` comes from loadUpdate() with the same question
Answers gatherAnswers(const install::update_metadata_parser::UpdateMetaData& update,
                      const Question& question);

/// A note with the nearest base codes if no product of the document has the one that was asked for.
/// Empty otherwise. Exceptions pass through as above.
///
/// \pre `loaded` comes from loadUpdate() and `answers` from gatherAnswers(), with the same question
std::string noteOnBaseCode(const LoadedUpdate& loaded, const Answers& answers);

}  // namespace update_metadata_tool::query
