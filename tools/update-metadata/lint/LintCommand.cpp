#include "lint/LintCommand.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <ios>
#include <new>
#include <ostream>
#include <sstream>
#include <string>
#include <variant>

#include <CLI/CLI.hpp>

#include "command/Advice.h"
#include "command/Arguments.h"
#include "command/HelpText.h"
#include "command/SharedOptions.h"
#include "diagnosis/Rule.h"
#include "input/DocumentText.h"
#include "lint/JsonReport.h"
#include "lint/RuleHelp.h"
#include "lint/SarifReport.h"
#include "lint/TextReport.h"
#include "output/Text.h"
#include "summary/ProductData.h"
#include "terminal/ProgressLine.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::lint {
namespace {

using command::ExitCode;
using install::update_metadata_parser::diagnose;
using install::update_metadata_parser::DiagnosisOptions;
using install::update_metadata_parser::diagnosis::findRule;

constexpr const char* kSarifFormat = "sarif";

constexpr const char* kExamples =
    R"(--fix applies only what is proved: the library gives the same answers as before,
or, if it rejected the document, loads it or reads farther. Then it reports what
is left; with standard input, which is written fixed to standard output, on
standard error.

Examples:
  update-metadata lint update.json
  update-metadata lint releases/*.json --product-data /srv/product-data
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

template <class Exception>
bool isA(const std::exception& failure) {
  return dynamic_cast<const Exception*>(&failure) != nullptr;
}

ThrownException describeException(const std::exception& failure) {
  const char* type = "std::runtime_error";
  if (isA<std::ios_base::failure>(failure)) {
    type = "std::ios_base::failure";
  } else if (isA<std::bad_alloc>(failure)) {
    type = "std::bad_alloc";
  }
  return {type, failure.what()};
}

using Outcome = std::variant<FileReport, UnreadableFile>;

// Checks one file, and fixes it if there is a fixer. If it cannot be read, the reason is written to
// `err`.
Outcome lintFile(const std::string& file, const input::GivenLimits& limits,
                 const DiagnosisOptions& options, FileFixer* fixer,
                 terminal::ProgressLine& progress, std::ostream& err) {
  try {
    const std::uint64_t limit = input::limitsOf(file, limits).bytes;
    if (fixer != nullptr) {
      return fixer->fix(file, limit, options, progress);
    }
    FileReport report{file, input::readDocument(file, limit, progress), {}};
    report.diagnosis = diagnose(report.text, options);
    return report;
  } catch (const std::exception& failure) {
    progress.clear();
    command::reportUnloaded(failure, options.path, err);
    return UnreadableFile{file, describeException(failure)};
  }
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
  if (isFixingInput() && (files_.size() > 1 || format_ != command::kTextFormat)) {
    throw CLI::ValidationError(
        "FILE", "with --fix, standard input (-) must be the only file, and the format text");
  }
}

bool LintCommand::isFixingInput() const {
  return isFixing_ &&
         std::find(files_.begin(), files_.end(), input::kStandardInput) != files_.end();
}

SeveritySettings LintCommand::makeSettings() const {
  SeveritySettings settings;
  for (const std::string& choice : severities_) {
    settings.add(choice);
  }
  return settings;
}

std::unique_ptr<ReportWriter> LintCommand::makeWriter(std::ostream& out, std::ostream& err) const {
  if (isFixingInput() && !isDryRun_) {
    return std::make_unique<TextReport>(err, false);
  }
  if (format_ == command::kJsonFormat) {
    return std::make_unique<JsonReport>(out);
  }
  if (format_ == kSarifFormat) {
    return std::make_unique<SarifReport>(out);
  }
  return std::make_unique<TextReport>(out, terminal::isOutputColored(), terminal::outputColumns());
}

LintTotals LintCommand::lintFiles(const SeveritySettings& settings, FileFixer* fixer,
                                  ReportWriter& writer, std::ostream& err) const {
  terminal::ProgressLine progress(err, terminal::errorTerminalColumns());
  DiagnosisOptions options;
  options.productData = command::toOptionalUtf16(productData_);
  options.onProgress = [&progress] { progress.update(); };
  LintTotals totals;
  std::size_t number = 0;
  for (const std::string& file : files_) {
    progress.begin("checking file " + std::to_string(++number) + " of " +
                   std::to_string(files_.size()));
    options.path = output::toUtf16(file);
    Outcome outcome = lintFile(file, limits_, options, fixer, progress, err);
    progress.clear();
    if (auto* const found = std::get_if<FileReport>(&outcome)) {
      settings.applyTo(found->diagnosis);
      totals.count(*found);
      writer.write(*found);
    } else {
      const auto& unreadable = std::get<UnreadableFile>(outcome);
      totals.count(unreadable);
      writer.write(unreadable);
    }
  }
  return totals;
}

ExitCode LintCommand::run(std::ostream& out, std::ostream& err) const {
  if (listsRules_ || explained_) {
    std::ostringstream text;
    if (explained_) {
      writeExplanation(*findRule(*explained_), makeSettings(), text);
    } else {
      writeRuleList(makeSettings(), text);
    }
    out << command::fitToColumns(text.str(), terminal::outputColumns());
    out.flush();
    return ExitCode::kDone;
  }
  summary::noteMissingProductData(productData_, err);
  const SeveritySettings settings = makeSettings();
  FileFixer fixer({appliesSuggested_ ? FixKinds::kSafeAndSuggested : FixKinds::kSafe, isDryRun_},
                  settings, out, err);
  std::ostream nowhere(nullptr);  // a diff comes without a report
  const std::unique_ptr<ReportWriter> writer = makeWriter(isDryRun_ ? nowhere : out, err);
  const LintTotals totals = lintFiles(settings, isFixing_ ? &fixer : nullptr, *writer, err);
  writer->finish(totals);
  out.flush();
  if (totals.unreadable != 0 || fixer.hasFailed()) {
    return ExitCode::kTrouble;
  }
  const bool isClean = totals.errors == 0 && (!isStrict_ || totals.warnings == 0);
  return isClean ? ExitCode::kDone : ExitCode::kFailed;
}

}  // namespace update_metadata_tool::lint
