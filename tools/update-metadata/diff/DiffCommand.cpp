#include "diff/DiffCommand.h"

#include <ostream>

#include <CLI/CLI.hpp>

#include "command/Arguments.h"
#include "command/SharedOptions.h"
#include "diff/Difference.h"
#include "diff/GrowthLimit.h"
#include "diff/JsonOutput.h"
#include "diff/TextOutput.h"
#include "output/Text.h"
#include "summary/Document.h"
#include "summary/ProductData.h"
#include "terminal/ProgressLine.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::diff {
namespace {

using command::ExitCode;

constexpr const char* kExamples = R"(Examples:
  update-metadata diff old.json new.json
  update-metadata diff old.json new.json --product-data /srv/product-data --format json
  update-metadata diff old.json new.json --fail-if-larger 5%

Exit status: 0 no differences, 1 differences, 2 usage error, or a document could not be loaded or
compared, or the output could not be written. With --fail-if-larger, 1 means that the bytes to fetch
grow by more than the limit, 0 that they do not.)";

CLI::Validator isGrowthLimit() {
  const auto refuse = [](const std::string& argument) {
    return GrowthLimit::parse(argument) ? std::string()
                                        : std::string(
                                              "give a number of bytes, such as 1048576, or a "
                                              "percentage of OLD's bytes to fetch, such as 2.5%");
  };
  return CLI::Validator(refuse, "");
}

}  // namespace

DiffCommand::DiffCommand(CLI::App& app)
    : command::Command(app, "diff", "Show the differences between two documents") {
  command::addDocument(subcommand(), "OLD", old_, "The old update metadata document (JSON)");
  command::addDocument(subcommand(), "NEW", new_, "The new one");
  command::addProductData(subcommand(), productData_);
  subcommand()
      .add_option("--fail-if-larger", growthLimit_,
                  "Fail only if the download grows by more than this many bytes or this percentage")
      ->type_name("BYTES|N%")
      ->check(isGrowthLimit());
  command::addLimits(subcommand(), limits_);
  command::addFormat(subcommand(), format_);
  subcommand().final_callback([this] { command::checkStandardInput("NEW", {old_, new_}); });
  subcommand().footer(kExamples);
}

ExitCode DiffCommand::run(std::ostream& out, std::ostream& err) const {
  const std::optional<std::u16string> productData = command::toOptionalUtf16(productData_);
  const bool needsDigest = format_ == command::kJsonFormat;
  terminal::ProgressLine progress(err, terminal::errorTerminalColumns());
  const auto before = summary::readContents(
      {output::toUtf16(old_), productData, limits_, needsDigest}, err, progress);
  const auto after = summary::readContents(
      {output::toUtf16(new_), productData, limits_, needsDigest}, err, progress);
  if (!before || !after) {
    return ExitCode::kTrouble;
  }
  progress.begin("comparing");
  const Difference difference = compare(*before, *after);
  progress.clear();
  summary::noteProductData(productData_, {{old_, *before}, {new_, *after}}, err);
  std::optional<Growth> growth;
  if (growthLimit_) {
    growth =
        GrowthLimit::parse(*growthLimit_)
            .value()
            .measure(difference.totals.before.bytesToFetch, difference.totals.after.bytesToFetch);
  }
  command::writeResults(format_, progress, out, difference, growth);
  const bool isFailed = growth ? growth->isTooLarge() : !difference.isEmpty();
  return isFailed ? ExitCode::kFailed : ExitCode::kDone;
}

}  // namespace update_metadata_tool::diff
