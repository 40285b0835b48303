#include "query/QueryCommand.h"

#include <exception>
#include <memory>
#include <ostream>

#include <CLI/CLI.hpp>

#include "Advice.h"
#include "Arguments.h"
#include "ProductData.h"
#include "SharedOptions.h"
#include "Text.h"
#include "query/JsonOutput.h"
#include "query/TextOutput.h"

namespace update_metadata_tool {
namespace {

constexpr const char* kExamples = R"(Examples:
  update-metadata query update.json
  update-metadata query update.json --product-data /srv/product-data
  update-metadata query update.json --product-data /srv/product-data --base-code ED
  update-metadata query update.json --format json

Exit status: 0 answered, 1 the document could not be loaded or answered (show, plan, diff and
report end with 2 then), or the output could not be written, 2 wrong usage.)";

}  // namespace

QueryCommand::QueryCommand(CLI::App& app)
    : Command(app, "query", "Answer every question about one document") {
  addDocument(subcommand(), "FILE", file_);
  addProductData(
      subcommand(), productData_,
      std::string(kForBaseCodes) + "; without it, the name of a product stands for its base code");
  subcommand()
      .add_option("--base-code", baseCode_,
                  "Tell the packages to delete and to extract of this product alone")
      ->type_name("CODE")
      ->check(isUtf8Argument());
  addFormat(subcommand(), format_);
  subcommand().footer(kExamples);
}

Question QueryCommand::makeQuestion() const {
  return {toUtf16(file_), toOptionalUtf16(productData_), toOptionalUtf16(baseCode_)};
}

std::optional<Answers> QueryCommand::answer(const Question& question, std::ostream& err) const {
  std::shared_ptr<install::update_metadata_parser::UpdateMetaData> update;
  try {
    update = loadUpdate(question);
  } catch (const std::exception& failure) {
    reportUnloaded(failure, question.file, err);
    return std::nullopt;
  }
  try {
    return gatherAnswers(*update, question);
  } catch (const std::exception& failure) {
    reportUnanswered(failure, question.file, question.productData.value_or(std::u16string()), err);
    return std::nullopt;
  }
}

ExitCode QueryCommand::run(std::ostream& out, std::ostream& err) const {
  const Question question = makeQuestion();
  const std::optional<Answers> answers = answer(question, err);
  if (!answers) {
    return ExitCode::kFailed;
  }
  noteMissingProductData(productData_, err);
  if (format_ == kJsonFormat) {
    writeJson(*answers, out);
  } else {
    writeText(question, *answers, out);
  }
  out.flush();
  return ExitCode::kDone;
}

}  // namespace update_metadata_tool
