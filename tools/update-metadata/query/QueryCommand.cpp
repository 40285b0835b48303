#include "query/QueryCommand.h"

#include <ostream>
#include <utility>

#include <CLI/CLI.hpp>

#include "command/Advice.h"
#include "command/Arguments.h"
#include "command/SharedOptions.h"
#include "output/Text.h"
#include "query/JsonOutput.h"
#include "query/TextOutput.h"
#include "summary/ProductData.h"
#include "terminal/ProgressLine.h"

namespace update_metadata_tool::query {
namespace {

constexpr const char* kExamples = R"(Examples:
  update-metadata query update.json
  update-metadata query update.json --product-data /srv/product-data
  update-metadata query update.json --product-data /srv/product-data --base-code ED
  update-metadata query update.json --format json

Exit status: 0 answered, 1 the document could not be loaded or queried (show, plan, diff and
report exit with status 2 then), or the output could not be written, 2 usage error.)";

}  // namespace

QueryCommand::QueryCommand(CLI::App& app)
    : command::Command(app, "query", "Print the library's answers about one document") {
  command::addDocument(subcommand(), "FILE", file_);
  command::addProductData(
      subcommand(), productData_,
      std::string(command::kForBaseCodes) + "; without it, product names are used as base codes");
  subcommand()
      .add_option("--base-code", baseCode_,
                  "List packages to delete and extract for this product only")
      ->type_name("CODE")
      ->check(command::isUtf8Argument());
  command::addLimits(subcommand(), limits_);
  command::addFormat(subcommand(), format_);
  subcommand().footer(kExamples);
}

Question QueryCommand::makeQuestion() const {
  return {output::toUtf16(file_), command::toOptionalUtf16(productData_),
          command::toOptionalUtf16(baseCode_), limits_, format_ == command::kJsonFormat};
}

std::optional<Answers> QueryCommand::answer(const Question& question, std::string& note,
                                            std::ostream& err) const {
  LoadedUpdate loaded;
  std::optional<Answers> answers;
  const bool isAnswered = command::loadAndQuery(
      question.file, question.productData, [&] { loaded = loadUpdate(question); },
      [&] {
        answers = gatherAnswers(*loaded.update, question);
        answers->sha256 = loaded.sha256;
        note = noteOnBaseCode(loaded, *answers);
      },
      err);
  return isAnswered ? std::move(answers) : std::nullopt;
}

command::ExitCode QueryCommand::run(std::ostream& out, std::ostream& err) const {
  std::string note;
  const std::optional<Answers> answers = answer(makeQuestion(), note, err);
  if (!answers) {
    return command::ExitCode::kFailed;
  }
  if (!summary::noteMissingProductData(productData_, err) && !note.empty()) {
    err << "update-metadata: note: " << note << "; check --base-code\n";
  }
  command::writeResults(format_, terminal::noProgress(), out, *answers);
  return command::ExitCode::kDone;
}

}  // namespace update_metadata_tool::query
