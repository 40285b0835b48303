#include "report/ReportCommand.h"

#include <filesystem>
#include <ostream>
#include <system_error>

#include "Arguments.h"
#include "FileReplacement.h"
#include "Text.h"
#include "report/Page.h"
#include "report/ReportData.h"
#include "summary/Document.h"

namespace update_metadata_tool {
namespace {

constexpr const char* kStandardOutput = "-";

constexpr const char* kExamples = R"(Examples:
  update-metadata report update.json -o report.html
  update-metadata report update.json -o report.html --product-data /srv/product-data
  update-metadata report update.json -o - > report.html

The page needs no network: one file, for any browser of today, to keep or to send.

Exit status: 0 written, 1 the page could not be written, 2 wrong usage, or the document could not be
loaded or answered.)";

}  // namespace

ReportCommand::ReportCommand(CLI::App& app)
    : Command(app, "report", "Write a page about one document, to look at in a browser") {
  const CLI::Validator isText = isUtf8Argument();
  subcommand()
      .add_option("FILE", file_, "The update metadata document (JSON)")
      ->required()
      ->type_name("")
      ->check(isText);
  subcommand()
      .add_option("-o,--output", output_, "Where to write the page; '-' is standard output")
      ->required()
      ->type_name("PAGE")
      ->check(isText);
  subcommand()
      .add_option("--product-data", productData_,
                  "Folder with the product data, for the base codes of the products")
      ->type_name("DIR")
      ->check(isText);
  subcommand().footer(kExamples);
}

ExitCode ReportCommand::run(std::ostream& out, std::ostream& err) const {
  const DocumentSource source{toUtf16(file_), toOptionalUtf16(productData_)};
  const std::optional<Contents> contents = readContents(source, err);
  if (!contents) {
    return ExitCode::kTrouble;
  }
  const std::u16string name = std::filesystem::path(source.file).filename().u16string();
  const std::string page = makePage(makeReportData(name, *contents));
  if (output_ == kStandardOutput) {
    out << page;
    out.flush();
    return ExitCode::kDone;
  }
  try {
    writeFile(output_, page);
  } catch (const std::system_error& failure) {
    err << "update-metadata: '" << toVisible(toUtf16(output_))
        << "' could not be written: " << failure.what()
        << "; nothing was changed: name another file, or '-' for standard output\n";
    return ExitCode::kFailed;
  }
  return ExitCode::kDone;
}

}  // namespace update_metadata_tool
