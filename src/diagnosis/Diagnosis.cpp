#include "install/update_metadata_parser/Diagnosis.h"

#include <array>
#include <cstddef>
#include <new>
#include <string>
#include <vector>

#include "diagnosis/FindingList.h"
#include "diagnosis/Prediction.h"
#include "diagnosis/ProductDataChecks.h"
#include "diagnosis/ReferenceChecks.h"
#include "diagnosis/Rule.h"
#include "diagnosis/ShapeChecks.h"
#include "diagnosis/SourceDocument.h"
#include "diagnosis/SyntaxChecks.h"
#include "diagnosis/TextChecks.h"
#include "diagnosis/source/LineIndex.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

void reportProgress(const DiagnosisOptions& options) {
  if (options.onProgress) {
    options.onProgress();
  }
}

void checkDocument(const RepairedText& text, const DiagnosisOptions& options,
                   FindingList& findings) {
  const source::SourceTree& tree = text.tree;
  checkEncoding(tree, findings);
  if (!text.isNestingSure) {
    return;
  }
  SourceDocument document(tree);
  checkRepeatedKeys(document, findings);
  reportProgress(options);
  const Sections sections = checkTop(document, findings);
  if (sections.components) {
    checkComponents(document, *sections.components, findings);
  }
  reportProgress(options);
  if (sections.products) {
    checkProducts(document, *sections.products, findings);
  }
  if (sections.files) {
    checkFiles(document, *sections.files, findings);
  }
  reportProgress(options);
  // References cannot be checked in an incomplete document.
  if (tree.isWhole()) {
    const std::vector<ProductWork> products = checkReferences(document, sections, findings);
    if (options.productData) {
      checkProductData(document, products, *options.productData, findings);
    }
  }
}

void addLines(std::string_view text, std::vector<Finding>& findings) {
  if (findings.empty()) {
    return;
  }
  const source::LineIndex lines(text);
  const auto addLine = [&lines](auto& place) {
    const source::Position position = lines.positionOf(place.offset);
    place.line = position.line;
    place.column = position.column;
  };
  for (Finding& finding : findings) {
    addLine(finding);
    for (RelatedPlace& related : finding.related) {
      addLine(related);
    }
  }
}

std::vector<OmittedFindings> listOmitted(const std::array<std::size_t, kRuleCount>& counts) {
  std::vector<OmittedFindings> omitted;
  for (const RuleDescription& description : allRules()) {
    const std::size_t count = counts[static_cast<std::size_t>(description.rule)];
    if (count != 0) {
      omitted.push_back({description.id, description.severity, count});
    }
  }
  return omitted;
}

Diagnosis check(std::string_view text, const DiagnosisOptions& options) {
  Diagnosis result;
  result.exception = predictLoading(options.path, text);
  reportProgress(options);
  FindingList findings;
  std::string repaired;
  const RepairedText read = readRepairing(text, repaired, result.readerMessage, findings);
  reportProgress(options);
  if (!read.tree.nodes().empty()) {
    checkDocument(read, options, findings);
  }
  if (result.exception && !findings.hasErrors()) {
    // The library reports a lack of memory as malformed text, but this text is well-formed.
    if (result.exception->text.rfind("Error while parsing ", 0) == 0) {
      throw std::bad_alloc();
    }
    findings.addAt(Rule::kRefused, 0, 1,
                   {"the library rejects the document: " + result.exception->text,
                    "report this and the document to the maintainers of this program"});
  }
  result.findings = findings.take(read.tree);
  addLines(text, result.findings);
  result.omitted = listOmitted(findings.omitted());
  return result;
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis

namespace install::update_metadata_parser {

Diagnosis diagnose(std::string_view text, const DiagnosisOptions& options) {
  return diagnosis::check(text, options);
}

}  // namespace install::update_metadata_parser
