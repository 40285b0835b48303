#include "show/ShowCommand.h"

#include <ostream>

#include <CLI/CLI.hpp>

#include "command/Arguments.h"
#include "command/SharedOptions.h"
#include "output/Text.h"
#include "show/JsonOutput.h"
#include "show/Overview.h"
#include "show/TextOutput.h"
#include "summary/Document.h"
#include "summary/ProductData.h"
#include "terminal/ProgressLine.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::show {
namespace {

constexpr const char* kBySize = "size";
constexpr const char* kByName = "name";

constexpr const char* kExamples = R"(Examples:
  update-metadata show update.json
  update-metadata show update.json --product-data /srv/product-data --top 20
  update-metadata show update.json --sort name
  update-metadata show update.json --format json | jq .totals.bytesToFetch

Exit status: 0 shown, 1 the output could not be written, 2 usage error, or the document could not
be loaded or queried.)";

}  // namespace

ShowCommand::ShowCommand(CLI::App& app)
    : command::Command(app, "show", "Summarize one document, with totals") {
  command::addDocument(subcommand(), "FILE", file_);
  command::addProductData(subcommand(), productData_);
  subcommand()
      .add_option("--sort", sort_, "Sort rows by 'size', largest first, or by 'name'")
      ->type_name("ORDER")
      ->check(CLI::IsMember({kBySize, kByName}))
      ->capture_default_str();
  subcommand()
      .add_option("--top", top_,
                  "How many of the largest products, components and packages to list")
      ->type_name("N")
      ->check(command::isCountArgument())
      ->capture_default_str();
  command::addLimits(subcommand(), limits_);
  command::addFormat(subcommand(), format_);
  subcommand().footer(kExamples);
}

command::ExitCode ShowCommand::run(std::ostream& out, std::ostream& err) const {
  terminal::ProgressLine progress(err, terminal::errorTerminalColumns());
  const auto contents =
      summary::readContents({output::toUtf16(file_), command::toOptionalUtf16(productData_),
                             limits_, format_ == command::kJsonFormat},
                            err, progress);
  if (!contents) {
    return command::ExitCode::kTrouble;
  }
  progress.begin("adding up");
  const RowOrder order = sort_ == kByName ? RowOrder::kName : RowOrder::kSize;
  const Overview overview = makeOverview(*contents, {order, top_});
  progress.clear();
  summary::noteProductData(productData_, {{file_, *contents}}, err);
  command::writeResults(format_, progress, out, *contents, overview);
  return command::ExitCode::kDone;
}

}  // namespace update_metadata_tool::show
