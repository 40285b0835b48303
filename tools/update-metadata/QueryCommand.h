#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "Answers.h"
#include "ExitCode.h"

namespace update_metadata_tool {

/// The subcommand `query`: loads one document and writes every answer about it.
class QueryCommand {
 public:
  /// Adds the subcommand and its options to `app`, which writes into this object when it parses its
  /// arguments: the object has to stay where it is until then.
  explicit QueryCommand(CLI::App& app);

  QueryCommand(const QueryCommand&) = delete;
  QueryCommand& operator=(const QueryCommand&) = delete;

  /// Tells whether the parsed arguments name this subcommand.
  bool isChosen() const { return subcommand_->parsed(); }

  /// Answers on `out` and flushes it; nothing is written there before every answer is known.
  ///
  /// When the document cannot be loaded or answered, the first line on `err` is the exception's
  /// text as it stands, the second one says which file it is about and what to do.
  ///
  /// What `out` throws passes through.
  ExitCode run(std::ostream& out, std::ostream& err) const;

 private:
  Question makeQuestion() const;
  std::optional<Answers> answer(const Question& question, std::ostream& err) const;

  CLI::App* subcommand_;
  std::string file_;
  std::optional<std::string> productData_;
  std::optional<std::string> baseCode_;
  std::string format_ = "text";
};

}  // namespace update_metadata_tool
