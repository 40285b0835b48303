#include "why/WhyCommand.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string_view>

#include <CLI/CLI.hpp>

#include "command/Advice.h"
#include "command/Arguments.h"
#include "command/SharedOptions.h"
#include "output/JsonWriter.h"
#include "output/Text.h"
#include "places/LoadedDocument.h"
#include "places/ProductLookUp.h"
#include "summary/ProductData.h"
#include "terminal/ProgressLine.h"
#include "terminal/Terminal.h"
#include "why/JsonOutput.h"
#include "why/TextOutput.h"

namespace update_metadata_tool::why {
namespace {

using command::ExitCode;

constexpr int kFormatVersion = 1;

constexpr const char* kExamples = R"(Examples:
  update-metadata why core_engine update.json --product-data /srv/product-data
  update-metadata why manual/old-index.html releases/*.json
  update-metadata why core_engine releases/*.json --format json

Exit status: 0 a document names it, 1 none does, or the output could not be written, 2 usage error,
or a document could not be loaded or queried; the others are searched.)";

}  // namespace

WhyCommand::WhyCommand(CLI::App& app)
    : command::Command(app, "why", "Show why documents delete or extract a package, or do not") {
  subcommand()
      .add_option("KEY", question_.wanted,
                  "The package, as COMPONENT_PACKAGE, or the path of a file to delete")
      ->required()
      ->type_name("")
      ->check(command::isUtf8Argument());
  command::addDocuments(subcommand(), files_).required();
  command::addProductData(subcommand(), productData_);
  subcommand()
      .add_option("--product", question_.product,
                  "Leave out other products; CODE is a name without product data")
      ->type_name("CODE")
      ->check(command::isUtf8Argument());
  command::addLimits(subcommand(), limits_);
  command::addFormat(subcommand(), format_);
  subcommand().final_callback([this] { command::checkStandardInput("FILE", files_); });
  subcommand().footer(kExamples);
}

template <class Write>
WhyCommand::Totals WhyCommand::searchAll(const Write& write, std::ostream& err) const {
  const std::optional<std::u16string> location = command::toOptionalUtf16(productData_);
  const places::ProductLookUp products(location);
  terminal::ProgressLine progress(err, terminal::errorTerminalColumns());
  Totals totals;
  totals.areDataMissing = summary::noteMissingProductData(productData_, err);
  std::size_t number = 0;
  for (const std::string& file : files_) {
    progress.begin("searching file " + std::to_string(++number) + " of " +
                   std::to_string(files_.size()));
    std::optional<places::LoadedDocument> document;
    std::optional<FoundDocument> found;
    std::size_t unknownProducts = 0;
    const bool isAnswered = command::loadAndQuery(
        output::toUtf16(file), location, [&] { document.emplace(file, limits_, progress); },
        [&] {
          found.emplace(search(*document, products, question_));
          unknownProducts = document->unknownProducts(products);
          const std::vector<std::string_view> names = document->productNames();
          totals.isProductKnown =
              totals.isProductKnown || !question_.product ||
              std::any_of(names.begin(), names.end(), [&](std::string_view name) {
                return isWanted(products.show(name, products.baseCodeOf(output::toUtf16(name))),
                                *question_.product);
              });
        },
        err, progress);
    progress.clear();
    totals.hasFailed = totals.hasFailed || !isAnswered;
    if (isAnswered) {
      if (productData_ && !totals.areDataMissing) {
        summary::noteUnknownProducts(*productData_, file, unknownProducts, err);
      }
      totals.isNamed = totals.isNamed || (found->isNamed && !found->places.empty());
      write(*found);
    }
  }
  return totals;
}

ExitCode WhyCommand::run(std::ostream& out, std::ostream& err) const {
  Totals totals;
  if (format_ == command::kJsonFormat) {
    output::JsonWriter json(out);
    json.beginObject()
        .member("version", kFormatVersion)
        .member("wanted", question_.wanted)
        .member("product", question_.product)
        .name("documents")
        .beginArray();
    totals = searchAll([&json](const FoundDocument& found) { writeJson(found, json); }, err);
    json.endArray().endObject();
    out << '\n';
  } else {
    const char* separator = "";
    totals = searchAll(
        [&](const FoundDocument& found) {
          out << separator;
          writeText(question_, found, terminal::outputColumns(), out);
          separator = "\n";
        },
        err);
  }
  out.flush();
  if (!totals.isProductKnown && !totals.hasFailed && !totals.areDataMissing) {
    err << "update-metadata: note: no document has a product "
        << (productData_ ? "with the base code '" : "'") << output::toVisible(*question_.product)
        << (productData_ ? "'; check --product\n"
                         : "'; base codes need --product-data, otherwise check the name\n");
  }
  if (totals.hasFailed) {
    return ExitCode::kTrouble;
  }
  return totals.isNamed ? ExitCode::kDone : ExitCode::kFailed;
}

}  // namespace update_metadata_tool::why
