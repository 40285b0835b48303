#include "report/ReportCommand.h"

#include <exception>
#include <filesystem>
#include <ostream>
#include <system_error>
#include <utility>

#include <CLI/CLI.hpp>

#include "Advice.h"
#include "Arguments.h"
#include "DocumentText.h"
#include "FileReplacement.h"
#include "ProductData.h"
#include "SharedOptions.h"
#include "Terminal.h"
#include "Text.h"
#include "lint/Linter.h"
#include "report/Page.h"
#include "report/ReportData.h"
#include "summary/Document.h"
#include "summary/UnknownProducts.h"

namespace update_metadata_tool {
namespace {

constexpr const char* kStandardOutput = "-";

constexpr const char* kExamples = R"(Examples:
  update-metadata report update.json -o report.html
  update-metadata report update.json -o report.html --product-data /srv/product-data
  update-metadata report update.json -o - > report.html

The page needs no network: one file, for any browser of today, to keep or to send.

Exit status: 0 written, 1 the page could not be written, 2 wrong usage, also a page in place of the
document or of the product data, or the document could not be loaded or answered.)";

CLI::Validator isPage() {
  const auto refuse = [](const std::string& argument) {
    return argument.empty() ? std::string("give a file, or - for standard output") : std::string();
  };
  return CLI::Validator(refuse, "");
}

// The folders that a document lies in are nobody else's business.
std::u16string nameToShow(const std::string& file) {
  return file == kStandardInput ? u"standard input"
                                : std::filesystem::path(toUtf16(file)).filename().u16string();
}

// Tells whether both are one file, by whatever names and links. What is not there is not.
bool isSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
  std::error_code ignored;
  return std::filesystem::equivalent(one, other, ignored);
}

}  // namespace

ReportCommand::ReportCommand(CLI::App& app)
    : Command(app, "report", "Write a page about one document, to look at in a browser") {
  addDocument(subcommand(), "FILE", file_);
  subcommand()
      .add_option("-o,--output", output_, "Where to write the page; - is standard output")
      ->required()
      ->type_name("PAGE")
      ->check(isUtf8Argument())
      ->check(isPage());
  addProductData(subcommand(), productData_);
  subcommand().footer(kExamples);
}

// What the page would replace that it is made from; nothing if it is written elsewhere.
const char* ReportCommand::findReplacedInput() const {
  if (output_ == kStandardOutput) {
    return nullptr;
  }
  if (isSameFile(file_ == kStandardInput ? "/dev/stdin" : file_, output_)) {
    return "the document";
  }
  // The user names their folder or their table.
  if (productData_ && (isSameFile(*productData_, output_) ||
                       isSameFile(std::filesystem::path(*productData_) / kProductTable, output_))) {
    return "the product data";
  }
  return nullptr;
}

// The page; nothing, after a complaint on `err`, if the document could not be loaded or answered.
std::optional<std::string> ReportCommand::makeReport(std::ostream& err,
                                                     ProgressLine& progress) const {
  const std::u16string file = toUtf16(file_);
  const std::optional<std::u16string> productData = toOptionalUtf16(productData_);
  std::string text;
  try {
    progress.begin("reading the document");
    text = readDocument(file_, progress);
  } catch (const std::exception& failure) {
    progress.clear();
    reportUnloaded(failure, file, err);
    return std::nullopt;
  }
  const std::optional<Contents> contents = readContents({file, productData, text}, err, progress);
  if (!contents) {
    return std::nullopt;
  }
  progress.clear();
  if (!noteMissingProductData(productData_, err)) {
    noteUnknownProducts(productData_, file_, *contents, err);
  }
  LintOptions options;
  options.productData = productData;
  options.onProgress = [&progress] { progress.goOn(); };
  progress.begin("linting the document");
  const FileReport linting = lintDocument(file_, std::move(text), options);
  progress.begin("making the page");
  return makePage(makeReportData(nameToShow(file_), *contents, linting));
}

ExitCode ReportCommand::run(std::ostream& out, std::ostream& err) const {
  if (const char* const input = findReplacedInput()) {
    err << "update-metadata: '" << toVisible(toUtf16(output_)) << "' is " << input
        << " itself, which the page would replace; nothing was changed: name another file with "
           "--output\n";
    return ExitCode::kTrouble;
  }
  ProgressLine progress(err, errorTerminalColumns());
  const std::optional<std::string> page = makeReport(err, progress);
  if (!page) {
    return ExitCode::kTrouble;
  }
  progress.clear();
  if (output_ == kStandardOutput) {
    out << *page;
    out.flush();
    return ExitCode::kDone;
  }
  try {
    writeFile(output_, *page);
  } catch (const std::system_error& failure) {
    err << "update-metadata: '" << toVisible(toUtf16(output_))
        << "' could not be written: " << failure.what()
        << "; nothing was changed: name another file, or '-' for standard output\n";
    return ExitCode::kFailed;
  }
  return ExitCode::kDone;
}

}  // namespace update_metadata_tool
