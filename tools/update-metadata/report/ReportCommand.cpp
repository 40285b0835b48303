#include "report/ReportCommand.h"

#include <filesystem>
#include <ostream>
#include <system_error>
#include <utility>

#include <CLI/CLI.hpp>

#include "command/Advice.h"
#include "command/Arguments.h"
#include "command/SharedOptions.h"
#include "input/DocumentText.h"
#include "install/update_metadata_parser/Diagnosis.h"
#include "output/FileReplacement.h"
#include "output/Text.h"
#include "report/Page.h"
#include "report/ReportData.h"
#include "summary/Document.h"
#include "summary/ProductData.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::report {
namespace {

using command::ExitCode;
using output::toUtf16;

constexpr const char* kStandardOutput = "-";

constexpr const char* kExamples = R"(Examples:
  update-metadata report update.json -o report.html
  update-metadata report update.json -o report.html --product-data /srv/product-data
  update-metadata report update.json -o - > report.html

The page is one file for any current browser. It needs no network.

Exit status: 0 written, 1 the page could not be written, 2 usage error, the page would replace the
document or the product data, or the document could not be loaded or queried.)";

CLI::Validator isPage() {
  const auto refuse = [](const std::string& argument) {
    return argument.empty() ? std::string("give a file, or - for standard output") : std::string();
  };
  return CLI::Validator(refuse, "");
}

// Without the folders: readers of the page need not know them.
std::u16string nameToShow(const std::string& file) {
  return file == input::kStandardInput
             ? u"standard input"
             : std::filesystem::path(toUtf16(file)).filename().u16string();
}

// Whether both paths lead to one existing file; the second is in UTF-8.
bool isSameFile(const std::filesystem::path& one, const std::string& other) {
  std::error_code ignored;
  return std::filesystem::equivalent(one, std::filesystem::u8path(other), ignored);
}

}  // namespace

ReportCommand::ReportCommand(CLI::App& app)
    : command::Command(app, "report", "Write an HTML report on one document") {
  command::addDocument(subcommand(), "FILE", file_);
  subcommand()
      .add_option("-o,--output", output_, "Write the page to this file; - is standard output")
      ->required()
      ->type_name("PAGE")
      ->check(command::isUtf8Argument())
      ->check(isPage());
  command::addProductData(subcommand(), productData_);
  command::addLimits(subcommand(), limits_);
  subcommand().footer(kExamples);
}

// Which of its inputs the page would replace; null if none.
const char* ReportCommand::findReplacedInput() const {
  if (output_ == kStandardOutput) {
    return nullptr;
  }
  if (isSameFile(std::filesystem::u8path(file_ == input::kStandardInput ? "/dev/stdin" : file_),
                 output_)) {
    return "the document";
  }
  // The user names the folder or the table.
  if (productData_ &&
      (isSameFile(std::filesystem::u8path(*productData_), output_) ||
       isSameFile(std::filesystem::u8path(*productData_) / summary::kProductTable, output_))) {
    return "the product data";
  }
  return nullptr;
}

// The page, or a message on `err` if the document could not be loaded or queried.
std::optional<std::string> ReportCommand::makeReport(std::ostream& err,
                                                     terminal::ProgressLine& progress) const {
  const std::u16string file = toUtf16(file_);
  const std::optional<std::u16string> productData = command::toOptionalUtf16(productData_);
  std::string text;
  std::optional<summary::Document> document;
  summary::Contents contents;
  const auto load = [&] {
    progress.begin("reading the document");
    text = input::readDocument(file_, input::limitsOf(file_, limits_).bytes, progress);
    document.emplace(summary::DocumentSource{file, productData, limits_, false, text}, progress);
  };
  const auto query = [&] {
    contents = document->gatherContents();
    document.reset();  // its model takes much memory
  };
  if (!command::loadAndQuery(file, productData, load, query, err, progress)) {
    return std::nullopt;
  }
  progress.clear();
  summary::noteProductData(productData_, {{file_, contents}}, err);
  install::update_metadata_parser::DiagnosisOptions options;
  options.path = file;
  options.productData = productData;
  options.onProgress = [&progress] { progress.update(); };
  progress.begin("linting the document");
  const install::update_metadata_parser::Diagnosis diagnosis =
      install::update_metadata_parser::diagnose(text, options);
  progress.begin("making the page");
  return makePage(makeReportData(nameToShow(file_), contents, diagnosis));
}

ExitCode ReportCommand::run(std::ostream& out, std::ostream& err) const {
  if (const char* const input = findReplacedInput()) {
    err << "update-metadata: '" << output::toVisible(toUtf16(output_)) << "' is " << input
        << ", which the page would replace; nothing was changed: choose another file with "
           "--output\n";
    return ExitCode::kTrouble;
  }
  terminal::ProgressLine progress(err, terminal::errorTerminalColumns());
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
    output::writeFile(output_, *page);
  } catch (const std::system_error& failure) {
    err << "update-metadata: '" << output::toVisible(toUtf16(output_))
        << "' could not be written: " << output::toVisible(failure.what())
        << "; nothing was changed: name another file, or '-' for standard output\n";
    return ExitCode::kFailed;
  }
  return ExitCode::kDone;
}

}  // namespace update_metadata_tool::report
