#include "why/TextOutput.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "output/ReadableSize.h"
#include "output/Text.h"
#include "summary/SummaryText.h"
#include "terminal/FlowingLine.h"

namespace update_metadata_tool::why {
namespace {

using places::Place;
using places::Side;
using places::Use;
using terminal::FlowingLine;

constexpr std::size_t kFurtherIndent = 4;

std::string shown(std::string_view name) {
  return output::toVisibleName(output::toUtf16(name));
}

std::string quoted(std::string_view name) {
  return '\'' + shown(name) + '\'';
}

std::string describeProduct(const places::ProductOfPlace& product) {
  return summary::describeProduct(
      output::toUtf16(product.name),
      product.baseCode ? std::optional(output::toUtf16(*product.baseCode)) : std::nullopt);
}

// "to delete", after which "for PRODUCT" may come.
const char* describeSide(Side side) {
  switch (side) {
    case Side::kDelete:
      return "to delete";
    case Side::kExtract:
      return "to extract";
    default:
      return "with files to delete";
  }
}

std::string describeReason(Use use, const Place& place) {
  switch (use) {
    case Use::kEarlierProduct:
      return "an earlier product comes first";
    case Use::kEqualKey:
      return "another package with this key comes first";
    case Use::kRepeatedKey:
      return "it is in the value of a duplicate key, which is ignored";
    case Use::kRepeatedComponent:
      return "its component is a duplicate";
    case Use::kUndescribedComponent:
      return "\"components\" does not contain its component";
    case Use::kUnusedComponent:
      return std::string("no product has the component in '") + nameOf(place.side) + '\'';
    case Use::kUnknownProduct:
      return "the product data do not contain the product";
    case Use::kOtherProduct:
      return "the product data assign the base code to another product first";
    default:
      return "";
  }
}

void writeUse(const char* answer, Use use, const Place& place, std::size_t width,
              std::ostream& out) {
  if (use != Use::kNotAsked) {
    const std::string verdict =
        use == Use::kUsed ? "used" : "not used: " + describeReason(use, place);
    summary::writeLine(std::string("  ") + answer + ": " + verdict, width, out);
  }
}

void writePlace(const FoundPlace& found, std::size_t width, std::ostream& out) {
  const Place& place = found.place;
  FlowingLine line(width, kFurtherIndent);
  line.words("line " + std::to_string(place.line) + ": ");
  if (place.package) {
    line.words("package ").name(quoted(*place.package)).words(" of ");
  }
  line.words("component ").name(quoted(place.component));
  line.words(std::string(", ") + describeSide(place.side));
  if (found.hasProduct) {
    line.words(" for ").name(describeProduct(found.product));
    if (place.package) {
      line.words(", named on line " + std::to_string(*place.namingLine));
    }
  }
  out << '\n' << line << '\n';
  if (place.size) {
    std::string sizes = "  size: " + output::toReadableSize(*place.size);
    if (place.uncompressedBytes) {
      sizes += "; unpacked: " + output::toReadableSize(*place.uncompressedBytes);
    }
    summary::writeLine(sizes, width, out);
  }
  const bool isToDelete = place.side == Side::kDelete;
  writeUse(isToDelete ? "packages to delete, all products" : "packages to extract, all products",
           place.uses.allProducts, place, width, out);
  writeUse(isToDelete ? "packages to delete, this product" : "packages to extract, this product",
           place.uses.oneProduct, place, width, out);
  writeUse("sizes of the packages to extract", place.uses.sizes, place, width, out);
  writeUse("packages with files to delete", place.uses.files, place, width, out);
}

// The products for which a package is deleted, or extracted, each once.
std::vector<std::string> productsOf(const FoundDocument& found, Side side) {
  std::vector<std::string> products;
  for (const FoundPlace& place : found.places) {
    if (place.place.side == side && place.hasProduct && place.place.uses.isAny()) {
      std::string product = describeProduct(place.product);
      if (products.empty() || products.back() != product) {
        products.push_back(std::move(product));
      }
    }
  }
  return products;
}

void addList(const std::vector<std::string>& names, FlowingLine& line) {
  const char* separator = "";
  for (const std::string& name : names) {
    line.words(separator).name(name);
    separator = ", ";
  }
}

bool hasUsedFiles(const FoundDocument& found, bool isFile) {
  return std::any_of(found.places.begin(), found.places.end(), [&](const FoundPlace& place) {
    return place.place.side == Side::kFiles && place.isFile == isFile && place.place.uses.isAny();
  });
}

// The line that answers the question.
void writeVerdict(const FoundDocument& found, std::size_t width, std::ostream& out) {
  FlowingLine line(width, kFurtherIndent);
  line.name(output::toVisible(found.head.file)).words(": ");
  if (found.places.empty()) {
    line.words("not named");
    if (!found.nearest.empty()) {
      std::vector<std::string> nearest;
      for (const std::string& name : found.nearest) {
        nearest.push_back(shown(name));
      }
      line.words("; similar: ");
      addList(nearest, line);
    }
    out << line << '\n';
    return;
  }
  const char* separator = "";
  for (const auto& [side, verb] :
       {std::pair(Side::kDelete, "deleted for "), std::pair(Side::kExtract, "extracted for ")}) {
    const std::vector<std::string> products = productsOf(found, side);
    if (!products.empty()) {
      line.words(separator).words(verb);
      addList(products, line);
      separator = "; ";
    }
  }
  for (const auto& [isFile, verdict] :
       {std::pair(false, "files of it are deleted"), std::pair(true, "the file is deleted")}) {
    if (hasUsedFiles(found, isFile)) {
      line.words(separator).words(verdict);
      separator = "; ";
    }
  }
  if (*separator == '\0') {
    line.words("named, but in no answer");
  }
  out << line << '\n';
}

}  // namespace

void writeText(const FoundDocument& found, std::size_t width, std::ostream& out) {
  writeVerdict(found, width, out);
  if (found.places.empty()) {
    return;
  }
  const places::DocumentHead& head = found.head;
  summary::writeReleases(head.base, head.target, head.updateLevel, width, out);
  for (const FoundPlace& place : found.places) {
    writePlace(place, width, out);
  }
}

}  // namespace update_metadata_tool::why
