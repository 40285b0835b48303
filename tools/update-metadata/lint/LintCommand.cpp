#include "lint/LintCommand.h"

#include <ostream>
#include <string>

#include <CLI/CLI.hpp>

#include "command/Arguments.h"
#include "command/HelpText.h"
#include "command/SharedOptions.h"
#include "diagnosis/Rule.h"
#include "lint/FileLinting.h"
#include "lint/RuleHelp.h"
#include "output/Text.h"
#include "output/WrittenText.h"
#include "summary/ProductData.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::lint {
namespace {

using command::ExitCode;
using install::update_metadata_parser::diagnosis::findRule;

constexpr const char* kExamples =
    R"(--fix applies only what is proved: the library gives the same answers as before,
or, if it rejected the document, loads it or reads farther. Then it reports what
is left; with standard input, which is written fixed to standard output, on
standard error.

Examples:
  update-metadata lint update.json
  update-metadata lint releases/*.json --product-data /srv/product-data --jobs 4
  update-metadata lint --strict --severity unlisted-member=off update.json
  update-metadata lint --format sarif update.json > update.sarif
  generate-update | update-metadata lint -
  update-metadata lint --fix update.json
  update-metadata lint --fix --suggested --dry-run update.json | patch update.json
  update-metadata lint --explain repeated-key

Exit status: 0 no errors, 1 errors (with --strict also warnings) or the output could not be
written, 2 wrong usage or a file that cannot be read, or with --fix replaced.)";

CLI::Validator isSeverityChoice() {
  return CLI::Validator([](const std::string& choice) { return SeveritySettings().add(choice); },
                        "");
}

CLI::Validator isRule() {
  const auto complaint = [](const std::string& id) {
    return findRule(id) ? std::string()
                        : "'" + output::toVisible(id) + "' is not a rule; --list-rules lists them";
  };
  return CLI::Validator(complaint, "");
}

}  // namespace

LintCommand::LintCommand(CLI::App& app)
    : command::Command(
          app, "lint",
          "Find every problem in documents and say whether the library can load them") {
  command::addDocuments(subcommand(), files_);
  command::addProductData(subcommand(), productData_, "for checking the names of products");
  command::addLimitBytes(subcommand(), limits_);
  subcommand()
      .add_option("--format", format_,
                  "Write 'text' for people, 'json' for programs or 'sarif' for code-review systems")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({command::kTextFormat, command::kJsonFormat, kSarifFormat}))
      ->capture_default_str();
  subcommand()
      .add_option(
          "--severity", severities_,
          "Report the findings of a rule as 'info', 'warning' or 'error', or switch them 'off'; "
          "can be repeated")
      ->type_name("RULE=SEVERITY")
      ->allow_extra_args(false)
      ->check(isSeverityChoice());
  subcommand().add_flag("--strict", isStrict_, "Exit with status 1 for warnings as well");
  command::addJobs(subcommand(), processes_, "Check");
  CLI::Option* const fix =
      subcommand().add_flag("--fix", isFixing_, "Apply the safe fixes, and report what is left");
  subcommand()
      .add_flag("--suggested", appliesSuggested_, "With --fix, apply the suggested fixes as well")
      ->needs(fix);
  subcommand()
      .add_flag("--dry-run", isDryRun_,
                "With --fix, change nothing, but print the changes as a unified diff")
      ->needs(fix);
  subcommand()
      .add_option("--explain", explained_, "Explain a rule and exit")
      ->type_name("RULE")
      ->check(isRule());
  subcommand().add_flag("--list-rules", listsRules_, "List every rule with its severity and exit");
  subcommand().final_callback([this] { checkArguments(); });
  subcommand().footer(kExamples);
}

void LintCommand::checkArguments() const {
  if (explained_ && listsRules_) {
    throw CLI::ExcludesError("--explain", "--list-rules");
  }
  const bool isHelp = explained_ || listsRules_;
  if (files_.empty() && !isHelp) {
    throw CLI::RequiredError("FILE");
  }
  if (!files_.empty() && isHelp) {
    throw CLI::ExcludesError("FILE", explained_ ? "--explain" : "--list-rules");
  }
  command::checkStandardInput("FILE", files_);
  if (isDryRun_ && format_ != command::kTextFormat) {
    throw CLI::ExcludesError("--dry-run", "--format " + format_);
  }
  if (isFixingInput(makeOptions()) && (files_.size() > 1 || format_ != command::kTextFormat)) {
    throw CLI::ValidationError(
        "FILE", "with --fix, standard input (-) must be the only file, and the format text");
  }
}

SeveritySettings LintCommand::makeSettings() const {
  SeveritySettings settings;
  for (const std::string& choice : severities_) {
    settings.add(choice);
  }
  return settings;
}

LintOptions LintCommand::makeOptions() const {
  LintOptions options{files_,    limits_,        command::toOptionalUtf16(productData_),
                      format_,   makeSettings(), {},
                      processes_};
  if (isFixing_) {
    options.fixing = {appliesSuggested_ ? FixKinds::kSafeAndSuggested : FixKinds::kSafe, isDryRun_};
  }
  return options;
}

ExitCode LintCommand::run(std::ostream& out, std::ostream& err) const {
  if (listsRules_ || explained_) {
    const std::string help = output::writtenText([this](std::ostream& text) {
      if (explained_) {
        writeExplanation(*findRule(*explained_), makeSettings(), text);
      } else {
        writeRuleList(makeSettings(), text);
      }
    });
    out << command::fitToColumns(help, terminal::outputColumns());
    out.flush();
    return ExitCode::kDone;
  }
  summary::noteMissingProductData(productData_, err);
  const LintTotals totals = lintFiles(makeOptions(), out, err);
  if (totals.unreadable != 0 || totals.unfixed != 0) {
    return ExitCode::kTrouble;
  }
  const bool isClean = totals.errors == 0 && (!isStrict_ || totals.warnings == 0);
  return isClean ? ExitCode::kDone : ExitCode::kFailed;
}

}  // namespace update_metadata_tool::lint
