#include "diagnosis/Linter.h"

#include <new>
#include <utility>
#include <vector>

#include "diagnosis/FindingList.h"
#include "diagnosis/Prediction.h"
#include "diagnosis/ProductDataChecks.h"
#include "diagnosis/ReferenceChecks.h"
#include "diagnosis/ShapeChecks.h"
#include "diagnosis/SourceDocument.h"
#include "diagnosis/SyntaxChecks.h"
#include "diagnosis/TextChecks.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

void reportProgress(const LintOptions& options) {
  if (options.onProgress) {
    options.onProgress();
  }
}

void checkDocument(const RepairedText& text, const LintOptions& options, FindingList& findings) {
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

}  // namespace

FileReport lintDocument(std::string file, std::string text, const LintOptions& options) {
  FileReport report;
  report.file = std::move(file);
  report.text = std::move(text);
  report.exception = predictLoading(report.file, report.text);
  report.loads = !report.exception;
  reportProgress(options);
  FindingList findings;
  std::string repaired;
  const RepairedText read = readRepairing(report.text, repaired, report.readerMessage, findings);
  reportProgress(options);
  if (!read.tree.nodes().empty()) {
    checkDocument(read, options, findings);
  }
  if (report.exception && !findings.hasErrors()) {
    // The library reports a lack of memory as malformed text, but this text is well-formed.
    if (report.exception->text.rfind("Error while parsing ", 0) == 0) {
      throw std::bad_alloc();
    }
    findings.addAt(Rule::kRefused, 0, 1,
                   {"the library rejects the document: " + report.exception->text,
                    "report this and the document to the maintainers of this program"});
  }
  report.findings = findings.take(read.tree);
  report.omitted = findings.omitted();
  return report;
}

}  // namespace install::update_metadata_parser::diagnosis
