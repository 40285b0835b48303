#include "list/ListCommand.h"

#include <cstddef>
#include <memory>
#include <ostream>

#include <CLI/CLI.hpp>

#include "command/Advice.h"
#include "command/Arguments.h"
#include "command/Jobs.h"
#include "command/ReplaceableDocument.h"
#include "command/SharedOptions.h"
#include "list/Rows.h"
#include "output/Text.h"
#include "places/LoadedDocument.h"
#include "places/ProductLookUp.h"
#include "summary/ProductData.h"
#include "terminal/ProgressLine.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::list {
namespace {

using command::ExitCode;

constexpr const char* kTsvFormat = "tsv";
constexpr const char* kNdjsonFormat = "ndjson";

// The result of a document.
constexpr const char* kLoaded = "loaded";

constexpr const char* kExamples = R"(Examples:
  update-metadata list update.json
  update-metadata list releases/*.json --product-data /srv/product-data > rows.tsv
  update-metadata list releases/*.json --format ndjson --jobs 4 > rows.ndjson

Exit status: 0 listed, 1 the output could not be written, 2 usage error, or a document could not
be loaded or queried; the others are listed.)";

}  // namespace

ListCommand::ListCommand(CLI::App& app)
    : command::Command(app, "list", "Print a row for each package, for queries on many documents") {
  command::addDocuments(subcommand(), files_).required();
  command::addProductData(subcommand(), productData_);
  subcommand()
      .add_option("--format", format_,
                  "Write rows as 'tsv', fields between tabs, or as 'ndjson', objects of JSON")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({kTsvFormat, kNdjsonFormat}))
      ->capture_default_str();
  command::addJobs(subcommand(), processes_, "Read");
  command::addLimits(subcommand(), limits_);
  subcommand().final_callback([this] { command::checkStandardInput("FILE", files_); });
  subcommand().footer(kExamples);
}

ExitCode ListCommand::run(std::ostream& out, std::ostream& err) const {
  const bool areDataMissing = summary::noteMissingProductData(productData_, err);
  const std::optional<std::u16string> location = command::toOptionalUtf16(productData_);
  const places::ProductLookUp products(location);
  const std::unique_ptr<RowWriter> rows = format_ == kTsvFormat ? makeTsvRows() : makeJsonRows();
  ExitCode code = ExitCode::kDone;
  command::Jobs jobs;
  jobs.count = files_.size();
  jobs.describe = [this](std::size_t index) {
    return "listing file " + std::to_string(index + 1) + " of " + std::to_string(files_.size());
  };
  jobs.work = [&](std::size_t index, std::ostream& output, std::ostream& messages,
                  terminal::ProgressLine& progress) {
    std::optional<places::LoadedDocument> document;
    const bool isLoaded = command::loadAndQuery(
        output::toUtf16(files_[index]), location,
        [&] { document.emplace(files_[index], limits_, progress); }, [&] { products.open(); },
        messages, progress);
    if (isLoaded) {
      if (productData_ && !areDataMissing) {
        progress.clear();
        summary::noteUnknownProducts(*productData_, files_[index],
                                     document->unknownProducts(products), messages);
      }
      rows->begin(document->head());
      document->forEachPlace(products, [&](const places::Place& place) {
        if (place.package) {
          rows->write(place, output);
          progress.update();
        }
      });
    }
    return isLoaded ? kLoaded : "";
  };
  jobs.done = [&code](std::size_t /*index*/, const std::string& result) {
    code = result == kLoaded ? code : ExitCode::kTrouble;
  };
  jobs.lost = [&](std::size_t index, const std::string& reason, bool hasOutput) {
    code = ExitCode::kTrouble;
    err << reason << '\n';
    command::reportOutcome(
        files_[index],
        hasOutput ? "was not listed completely; list it alone" : "was not listed; list it alone",
        err);
  };
  terminal::ProgressLine progress(err, terminal::errorTerminalColumns());
  rows->writeHeading(out);
  command::runJobs(jobs, processes_, out, err, progress);
  out.flush();
  return code;
}

}  // namespace update_metadata_tool::list
