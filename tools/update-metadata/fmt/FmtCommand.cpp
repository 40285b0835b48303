#include "fmt/FmtCommand.h"

#include <exception>
#include <new>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <utility>

#include <CLI/CLI.hpp>

#include "command/Advice.h"
#include "command/ReplaceableDocument.h"
#include "command/SharedOptions.h"
#include "fmt/Formatting.h"
#include "input/DocumentText.h"
#include "output/Text.h"

namespace update_metadata_tool::fmt {
namespace {

using command::ExitCode;
using output::toUtf16;

constexpr int kWidestIndent = 8;

constexpr const char* kExamples =
    R"(The library reads the same from the result, which fmt verifies before it writes
anything. Keys and values keep their spelling and their order; only the white
space between them changes. A byte-order mark and white space around the document
are removed, because the library rejects them. A document that the library cannot
load is not changed.

Examples:
  update-metadata fmt update.json
  update-metadata fmt --check one.json another.json
  update-metadata fmt --compact - < update.json > small.json

Exit status: 0 every document has the format now, 1 a document would change
(--check) or the output could not be written, 2 a document could not be loaded,
read or replaced, or wrong usage.)";

// Reports why something happened to a file, and what to do.
void complain(const std::exception& failure, const std::string& file, const std::string& outcome,
              std::ostream& err) {
  err << output::toVisible(failure.what()) << '\n';
  command::reportOutcome(file, outcome, err);
}

std::optional<command::ReplaceableDocument> read(const std::string& file, std::uint64_t limit,
                                                 std::ostream& err) {
  try {
    return std::optional<command::ReplaceableDocument>(std::in_place, file, limit);
  } catch (const std::exception& failure) {
    complain(failure, file,
             "could not be read; " + command::adviseOnLoading(failure, toUtf16(file)), err);
    return std::nullopt;
  }
}

std::optional<std::string> formatText(const std::string& file, const std::string& text,
                                      const Layout& layout, std::ostream& err) {
  try {
    return format(toUtf16(file), text, layout);
  } catch (const RejectedText& rejected) {
    complain(rejected, file, "was not changed; " + rejected.advice(), err);
  } catch (const std::bad_alloc& failure) {
    complain(failure, file, "was not changed; " + command::adviseOnLoading(failure, toUtf16(file)),
             err);
  } catch (const std::logic_error& failure) {
    complain(failure, file, "was not changed; this is a bug in the command: please report it", err);
  }
  return std::nullopt;
}

}  // namespace

FmtCommand::FmtCommand(CLI::App& app)
    : command::Command(app, "fmt", "Reformat documents and strip surrounding white space") {
  command::addDocuments(subcommand(), files_).required();
  subcommand().add_flag("--check", checksOnly_,
                        "Change nothing, but print the names of the files that would change");
  CLI::Option* const indent =
      subcommand()
          .add_option("--indent", layout_.indent, "Number of blanks for each level of nesting")
          ->type_name("N")
          ->check(CLI::Range(0, kWidestIndent, "0..8"))
          ->capture_default_str();
  subcommand()
      .add_flag("--compact", layout_.isCompact,
                "Write each document on one line, without white space")
      ->excludes(indent);
  command::addLimitBytes(subcommand(), limits_);
  subcommand().final_callback([this] { command::checkStandardInput("FILE", files_); });
  subcommand().footer(kExamples);
}

FmtCommand::Outcome FmtCommand::handle(const std::string& file, std::ostream& out,
                                       std::ostream& err) const {
  const bool isFilter = file == input::kStandardInput;
  if (!checksOnly_ && !isFilter && command::isReadOnlyOnce(file)) {
    command::reportOutcome(
        file, "was not changed: it is not a regular file; pipe its content to 'fmt -'", err);
    return Outcome::kFailed;
  }
  const auto document = read(file, input::limitsOf(file, limits_).bytes, err);
  if (!document) {
    return Outcome::kFailed;
  }
  const std::optional<std::string> formatted = formatText(file, document->text(), layout_, err);
  if (!formatted) {
    return Outcome::kFailed;
  }
  const bool isChanged = *formatted != document->text();
  if (checksOnly_) {
    if (isChanged) {
      out << output::toVisible(toUtf16(file)) << '\n';
    }
  } else if (isFilter) {
    out << *formatted;
  } else if (isChanged && !document->replace(*formatted, err)) {
    return Outcome::kFailed;
  }
  return isChanged ? Outcome::kChanged : Outcome::kUnchanged;
}

ExitCode FmtCommand::run(std::ostream& out, std::ostream& err) const {
  bool hasFailed = false;
  bool hasChanged = false;
  for (const std::string& file : files_) {
    const Outcome outcome = handle(file, out, err);
    hasFailed = hasFailed || outcome == Outcome::kFailed;
    hasChanged = hasChanged || outcome == Outcome::kChanged;
  }
  out.flush();
  if (hasFailed) {
    return ExitCode::kTrouble;
  }
  return checksOnly_ && hasChanged ? ExitCode::kFailed : ExitCode::kDone;
}

}  // namespace update_metadata_tool::fmt
