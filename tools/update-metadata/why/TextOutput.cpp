#include "why/TextOutput.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
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
using places::Verdict;
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

// Where the winner of a verdict is, if that is known.
std::string onLine(const Verdict& verdict) {
  return verdict.winnerLine == 0 ? "" : " on line " + std::to_string(verdict.winnerLine);
}

// Why a list of packages, or the sizes, do not contain a place.
void addReason(const Verdict& verdict, bool isSize, const FoundPlace& found, FlowingLine& line) {
  switch (verdict.use) {
    case Use::kEarlierProduct:
      line.name(quoted(verdict.winner))
          .words(onLine(verdict))
          .words(isSize ? " comes first and gives the sizes"
                        : " comes first and has the same base code");
      break;
    case Use::kEqualKey:
      line.words("a package of component ")
          .name(quoted(verdict.winner))
          .words(onLine(verdict))
          .words(" comes first and has the same key");
      break;
    case Use::kRepeatedKey:
      line.words(found.product ? "the product names it in the value of a duplicate key, which is "
                                 "ignored"
                               : "it is in the value of a duplicate key, which is ignored");
      break;
    case Use::kRepeatedComponent:
      line.words(found.product ? "the product has named the component before," + onLine(verdict)
                               : "an earlier component is read with the same name");
      break;
    case Use::kUndescribedComponent:
      line.words("\"components\" does not contain the component");
      break;
    case Use::kUnusedComponent:
      line.words(std::string("no product has the component in '") + nameOf(found.place.side) +
                 (found.isNamedInDuplicate
                      ? "', except in the value of a duplicate key, which is ignored"
                      : "'"));
      break;
    case Use::kUnknownProduct:
      line.words("the product data do not contain the product");
      break;
    case Use::kOtherProduct:
      line.words("the product data assign its base code to ").name(quoted(verdict.winner));
      break;
    case Use::kUsed:
    case Use::kNotAsked:
      break;
  }
}

struct Answer {
  const char* name;
  Verdict verdict;
  bool isSize = false;
};

// The answers that could contain a place.
std::vector<Answer> answersOf(const Place& place) {
  const places::Verdicts& verdicts = place.verdicts;
  const bool isToDelete = place.side == Side::kDelete;
  std::vector<Answer> answers = {
      {isToDelete ? "packages to delete, all products" : "packages to extract, all products",
       verdicts.allProducts},
      {isToDelete ? "packages to delete, this product" : "packages to extract, this product",
       verdicts.oneProduct},
      {"sizes of the packages to extract", verdicts.sizes, true},
      {"packages with files to delete", verdicts.files}};
  answers.erase(
      std::remove_if(answers.begin(), answers.end(),
                     [](const Answer& answer) { return answer.verdict.use == Use::kNotAsked; }),
      answers.end());
  return answers;
}

void writeAnswers(const FoundPlace& found, std::size_t width, std::ostream& out) {
  const std::vector<Answer> answers = answersOf(found.place);
  const Use first = answers.front().verdict.use;
  const bool isAnyOther =
      std::any_of(answers.begin(), answers.end(),
                  [first](const Answer& answer) { return answer.verdict.use != first; });
  if (first != Use::kUsed && !isAnyOther && first != Use::kEarlierProduct) {
    FlowingLine line = summary::beginLine("  in no answer: ", width);
    addReason(answers.front().verdict, false, found, line);
    out << line << '\n';
    return;
  }
  for (const Answer& answer : answers) {
    FlowingLine line = summary::beginLine(std::string("  in ") + answer.name + ": ", width);
    line.words(answer.verdict.use == Use::kUsed ? "yes" : "no, ");
    addReason(answer.verdict, answer.isSize, found, line);
    out << line << '\n';
  }
}

void writePlace(const Question& question, const FoundPlace& found, std::size_t width,
                std::ostream& out) {
  const Place& place = found.place;
  FlowingLine line(width, kFurtherIndent);
  line.words("line " + std::to_string(place.line) + ": ");
  if (found.fileLine) {
    line.words("file ").name(quoted(question.wanted)).words(" of ");
  }
  if (place.package) {
    line.words("package ").name(quoted(*place.package)).words(" of ");
  }
  line.words("component ").name(quoted(place.component));
  line.words(found.fileLine ? ", to delete, listed on line " + std::to_string(*found.fileLine)
                            : std::string(", ") + describeSide(place.side));
  if (found.product) {
    line.words(" for ").name(describeProduct(*found.product));
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
  writeAnswers(found, width, out);
}

bool isListed(const Place& place) {
  return place.verdicts.allProducts.use == Use::kUsed ||
         place.verdicts.oneProduct.use == Use::kUsed;
}

// The products for which a package is deleted, or extracted, each once.
std::vector<std::string> productsOf(const FoundDocument& found, Side side) {
  std::vector<std::string> products;
  for (const FoundPlace& place : found.places) {
    if (place.place.side == side && place.product && isListed(place.place)) {
      std::string product = describeProduct(*place.product);
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
    return place.fileLine.has_value() == isFile && place.place.verdicts.files.use == Use::kUsed;
  });
}

// The verdict on a document without a place to show.
void addAbsence(const Question& question, const FoundDocument& found, FlowingLine& line) {
  if (found.isNamed) {
    line.words("named, but not for product ")
        .name(quoted(question.product.value_or(std::string())));
    return;
  }
  line.words("not named");
  if (!found.nearest.empty()) {
    std::vector<std::string> nearest(found.nearest.size());
    std::transform(found.nearest.begin(), found.nearest.end(), nearest.begin(), shown);
    line.words("; similar: ");
    addList(nearest, line);
  }
}

// What a document does with the package or file.
void addUses(const FoundDocument& found, FlowingLine& line) {
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
       {std::pair(false, "loses files"), std::pair(true, "the file is deleted")}) {
    if (hasUsedFiles(found, isFile)) {
      line.words(separator).words(verdict);
      separator = "; ";
    }
  }
  if (*separator != '\0') {
    return;
  }
  const bool hasSize = std::any_of(
      found.places.begin(), found.places.end(),
      [](const FoundPlace& place) { return place.place.verdicts.sizes.use == Use::kUsed; });
  line.words(!found.isNamed ? "not named, but a product names a component that is not described"
             : hasSize      ? "named, but only its sizes are in an answer"
                            : "named, but in no answer");
}

}  // namespace

void writeText(const Question& question, const FoundDocument& found, std::size_t width,
               std::ostream& out) {
  const places::DocumentHead& head = found.head;
  FlowingLine line(width, kFurtherIndent);
  line.name(output::toVisible(head.file)).words(": ");
  if (found.places.empty()) {
    addAbsence(question, found, line);
    out << line << '\n';
    return;
  }
  addUses(found, line);
  out << line << '\n';
  summary::writeReleases(head.base, head.target, head.updateLevel, width, out);
  for (const FoundPlace& place : found.places) {
    writePlace(question, place, width, out);
  }
}

}  // namespace update_metadata_tool::why
