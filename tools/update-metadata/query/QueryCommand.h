#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "query/Answers.h"

namespace update_metadata_tool::query {

/// The subcommand `query`: loads one document and writes every answer about it.
class QueryCommand : public command::Command {
 public:
  explicit QueryCommand(CLI::App& app);

  /// Nothing is written on `out` before every answer is known.
  ///
  /// When the document cannot be loaded or answered, the first line on `err` is the exception's
  /// text, escaped for a terminal; the second one says which file it is about and what to do. A
  /// base code that no product has is noted there, but is no failure.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  Question makeQuestion() const;
  std::optional<Answers> answer(const Question& question, std::string& note,
                                std::ostream& err) const;

  std::string file_;
  std::optional<std::string> productData_;
  std::optional<std::string> baseCode_;
  std::string format_ = "text";
};

}  // namespace update_metadata_tool::query
