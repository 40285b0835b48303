#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "command/Command.h"
#include "command/ExitCode.h"
#include "input/DocumentLimits.h"
#include "query/Answers.h"

namespace update_metadata_tool::query {

/// The subcommand `query`: prints the library's answers about one document.
class QueryCommand : public command::Command {
 public:
  explicit QueryCommand(CLI::App& app);

  /// Gathers all answers before writing any of them.
  ///
  /// If the document cannot be loaded or queried, the first line on `err` is the exception's text,
  /// escaped for a terminal; the second names the file and says what to do. A base code that no
  /// product has causes a note, not a failure.
  command::ExitCode run(std::ostream& out, std::ostream& err) const override;

 private:
  Question makeQuestion() const;
  std::optional<Answers> answer(const Question& question, std::string& note,
                                std::ostream& err) const;

  std::string file_;
  input::GivenLimits limits_;
  std::optional<std::string> productData_;
  std::optional<std::string> baseCode_;
  std::string format_ = "text";
};

}  // namespace update_metadata_tool::query
