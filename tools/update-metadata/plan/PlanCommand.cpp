#include "plan/PlanCommand.h"

#include <filesystem>
#include <ostream>
#include <utility>

#include <CLI/CLI.hpp>

#include "command/Arguments.h"
#include "command/SharedOptions.h"
#include "output/Count.h"
#include "output/Text.h"
#include "plan/InstalledTree.h"
#include "plan/JsonOutput.h"
#include "plan/ProductChoice.h"
#include "plan/TextOutput.h"
#include "summary/Document.h"
#include "summary/ProductData.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::plan {
namespace {

using command::ExitCode;

constexpr const char* kExamples = R"(Examples:
  update-metadata plan update.json --product-data /srv/product-data
  update-metadata plan update.json --product-data /srv/product-data --product ED --product VI
  update-metadata plan update.json --product-data /srv/product-data --installed /opt/fernlight
  update-metadata plan update.json --product-data /srv/product-data --format json > plan.json

Nothing is ever fetched, extracted or deleted.

Exit status: 0 planned, 1 a file to delete lies outside the installation or could not be searched
for, or the output could not be written, 2 usage error, an unknown product, no such installation,
or the document could not be loaded or queried.)";

// Nothing, after a message, if the folder cannot be accessed.
std::optional<InstalledTree> openTree(const std::string& folder, std::ostream& err) {
  try {
    return InstalledTree(std::filesystem::u8path(folder));
  } catch (const std::filesystem::filesystem_error& failure) {
    err << "update-metadata: '" << output::toVisible(folder)
        << "' cannot be read as a folder: " << failure.code().message()
        << "; name the installation folder with --installed\n";
    return std::nullopt;
  }
}

// Reports whether the plan can be carried out there, with the reasons on `err` if it cannot.
ExitCode judge(const InstalledCounts& counts, const std::string& folder, std::ostream& err) {
  const std::string tree = '\'' + output::toVisible(folder) + '\'';
  const std::size_t outside = counts.at(FileState::kOutside);
  const std::size_t unknown = counts.at(FileState::kUnknown);
  if (outside != 0) {
    err << "update-metadata: " << output::count(outside, "file") << " to delete"
        << (outside == 1 ? " lies" : " lie") << " outside " << tree
        << " once links and '..' are resolved; do not apply this document there\n";
  }
  if (unknown != 0) {
    err << "update-metadata: " << output::count(unknown, "file") << " to delete"
        << " could not be searched for in " << tree
        << "; the plan shows why: check the permissions and links there\n";
  }
  return outside + unknown == 0 ? ExitCode::kDone : ExitCode::kFailed;
}

}  // namespace

PlanCommand::PlanCommand(CLI::App& app)
    : command::Command(app, "plan", "List what an installer would do, without doing it") {
  command::addDocument(subcommand(), "FILE", file_);
  command::addProductData(subcommand(), productData_).required();
  subcommand()
      .add_option("--product", baseCodes_,
                  "Base code of a product to plan for; may be repeated; without it, the plan is "
                  "for all products")
      ->type_name("CODE")
      ->allow_extra_args(false)
      ->check(command::isUtf8Argument());
  subcommand()
      .add_option("--installed", installed_,
                  "Installation folder to search for the files to delete")
      ->type_name("DIR");
  command::addLimits(subcommand(), limits_);
  command::addFormat(subcommand(), format_);
  subcommand().footer(kExamples);
}

std::optional<PlanCommand::PlannedDocument> PlanCommand::makePlannedDocument(
    std::ostream& err, terminal::ProgressLine& progress) const {
  std::vector<std::u16string> baseCodes;
  for (const std::string& code : baseCodes_) {
    baseCodes.push_back(output::toUtf16(code));
  }
  std::optional<PlannedDocument> planned;
  summary::queryDocument(
      {output::toUtf16(file_), command::toOptionalUtf16(productData_), limits_,
       format_ == command::kJsonFormat},
      [&](const summary::Document& document) {
        summary::Contents contents = document.gatherContents();
        progress.clear();
        const std::optional<ProductChoice> choice =
            baseCodes.empty() ? chooseAllProducts(contents)
                              : chooseProducts(document, contents, baseCodes, err);
        if (choice) {
          progress.begin("planning");
          Plan plan = makePlan(contents, *choice);
          planned = {std::move(contents), std::move(plan)};
        }
      },
      err, progress);
  return planned;
}

ExitCode PlanCommand::run(std::ostream& out, std::ostream& err) const {
  terminal::ProgressLine progress(err, terminal::errorTerminalColumns());
  std::optional<PlannedDocument> planned = makePlannedDocument(err, progress);
  if (!planned) {
    return ExitCode::kTrouble;
  }
  progress.clear();
  summary::noteProductData(productData_, {{file_, planned->contents}}, err);
  std::optional<InstalledCounts> counts;
  if (installed_) {
    const std::optional<InstalledTree> tree = openTree(*installed_, err);
    if (!tree) {
      return ExitCode::kTrouble;
    }
    progress.begin("searching for the files to delete");
    counts = searchForFiles(planned->plan, *tree, progress);
  }
  command::writeResults(format_, progress, out, planned->contents, planned->plan, counts);
  return counts ? judge(*counts, *installed_, err) : ExitCode::kDone;
}

}  // namespace update_metadata_tool::plan
