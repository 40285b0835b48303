#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "places/LoadedDocument.h"
#include "places/Place.h"
#include "places/ProductLookUp.h"

namespace update_metadata_tool::why {

/// What the user asks about.
struct Question {
  std::string wanted;                  ///< a package key, or the path of a file to delete
  std::optional<std::string> product;  ///< the base code of the only product that is of interest
};

/// A place that answers the question.
struct FoundPlace {
  places::Place place;  ///< without its product
  std::optional<places::ProductOfPlace> product;
  std::string otherProduct;  ///< what the winner of Use::kOtherProduct refers to

  /// The line of the path in the list of files, if it was asked for and not the key.
  std::optional<std::size_t> fileLine;

  /// Whether a product names the component for this side in the value of a duplicate key.
  bool isNamedInDuplicate = false;
};

/// What one document says. Must not outlive it.
struct FoundDocument {
  const places::DocumentHead& head;
  std::deque<FoundPlace> places;  ///< as they come from the document

  /// Whether the package or file is named, even if only for products that are left out. Places of
  /// an undescribed component alone do not name a package.
  bool isNamed = false;

  std::vector<std::string> nearest;  ///< if nothing is found: keys and paths that are similar
};

/// All places of a document that name a package with that key, or list a file with that path; also
/// those of undescribed components whose packages could have the key.
///
/// Exceptions of the product data pass through. Linear in the document and in the found places.
FoundDocument search(const places::LoadedDocument& document, const places::ProductLookUp& products,
                     const Question& question);

/// Whether a product has the base code, or without product data the name, that was asked for.
bool isWanted(const places::ProductOfPlace& product, const std::string& code);

}  // namespace update_metadata_tool::why
