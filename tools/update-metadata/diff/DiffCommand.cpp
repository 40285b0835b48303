#include "diff/DiffCommand.h"

#include <ostream>

#include <CLI/CLI.hpp>

#include "command/Arguments.h"
#include "command/SharedOptions.h"
#include "diff/Difference.h"
#include "diff/Growth.h"
#include "diff/JsonOutput.h"
#include "diff/TextOutput.h"
#include "input/ProductData.h"
#include "output/Text.h"
#include "summary/Document.h"
#include "summary/UnknownProducts.h"
#include "terminal/ProgressLine.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::diff {
namespace {

using command::ExitCode;

constexpr const char* kExamples = R"(Examples:
  update-metadata diff old.json new.json
  update-metadata diff old.json new.json --product-data /srv/product-data --format json
  update-metadata diff old.json new.json --fail-if-larger 5%

Exit status: 0 both say the same, 1 they differ, 2 wrong usage, or a document could not be loaded or
compared, or the output could not be written. With --fail-if-larger, 1 says that the bytes to fetch
grow by more than is allowed, and 0 that they do not.)";

CLI::Validator isGrowthLimit() {
  const auto refuse = [](const std::string& argument) {
    return GrowthLimit::parse(argument) ? std::string()
                                        : std::string(
                                              "give a number of bytes, 1048576, or a percentage of "
                                              "the bytes to fetch of OLD, 2.5%");
  };
  return CLI::Validator(refuse, "");
}

}  // namespace

DiffCommand::DiffCommand(CLI::App& app)
    : command::Command(app, "diff", "Tell in what two documents differ") {
  command::addDocument(subcommand(), "OLD", old_,
                       "The update metadata document (JSON) to compare with");
  command::addDocument(subcommand(), "NEW", new_, "The document that is compared");
  command::addProductData(subcommand(), productData_);
  subcommand()
      .add_option(
          "--fail-if-larger", limit_,
          "Fail only if the bytes to fetch grow by more than so many bytes, or by more than "
          "so many percent of the bytes to fetch of OLD")
      ->type_name("BYTES|N%")
      ->check(isGrowthLimit());
  command::addFormat(subcommand(), format_);
  subcommand().final_callback([this] { command::checkStandardInput("NEW", {old_, new_}); });
  subcommand().footer(kExamples);
}

ExitCode DiffCommand::run(std::ostream& out, std::ostream& err) const {
  const std::optional<std::u16string> productData = command::toOptionalUtf16(productData_);
  terminal::ProgressLine progress(err, terminal::errorTerminalColumns());
  const auto before = summary::readContents({output::toUtf16(old_), productData}, err, progress);
  const auto after = summary::readContents({output::toUtf16(new_), productData}, err, progress);
  if (!before || !after) {
    return ExitCode::kTrouble;
  }
  progress.begin("comparing");
  const Difference difference = compare(*before, *after);
  progress.clear();
  if (!input::noteMissingProductData(productData_, err)) {
    summary::noteUnknownProducts(productData_, old_, *before, err);
    summary::noteUnknownProducts(productData_, new_, *after, err);
  }
  std::optional<Growth> growth;
  if (limit_) {
    growth = measureGrowth(difference.totals, GrowthLimit::parse(*limit_).value());
  }
  terminal::beginOutput(progress);
  if (format_ == command::kJsonFormat) {
    writeJson(difference, growth, out);
  } else {
    writeText(difference, growth, terminal::outputColumns(), out);
  }
  out.flush();
  const bool isFailed = growth ? growth->isTooLarge() : !difference.isEmpty();
  return isFailed ? ExitCode::kFailed : ExitCode::kDone;
}

}  // namespace update_metadata_tool::diff
