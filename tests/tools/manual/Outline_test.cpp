#include "manual/Outline.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "SampleProgram.h"

namespace {

using update_metadata_tool::manual::CommandOutline;
using update_metadata_tool::manual::OptionOutline;
using update_metadata_tool::manual::outlineOf;

std::string joined(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) {
    result += (result.empty() ? "" : "|") + text;
  }
  return result;
}

// One line for each positional and option, and for the remarks.
std::string toText(const CommandOutline& command) {
  std::ostringstream text;
  text << command.name << ": " << command.description << '\n';
  for (const auto* list : {&command.positionals, &command.options}) {
    for (const OptionOutline& option : *list) {
      text << joined(option.names) << " <" << option.argument << "> {" << joined(option.choices)
           << "} =" << option.initial << (option.isRequired ? " required" : "")
           << (option.isRepeated ? " repeated" : "") << ": " << option.description << '\n';
    }
  }
  text << joined(command.remarks) << '\n';
  return text.str();
}

TEST(Outline, DescribesTheProgramAndItsSubcommandsInTheirOrder) {
  const test_support::SampleProgram sample;
  const auto outline = outlineOf(sample.app());
  EXPECT_EQ(toText(outline.program),
            "sample: Shows samples.\n"
            "-h|--help <> {} =: Print this help message and exit\n"
            "--version <> {} =: Display program version information and exit\n"
            "\n");
  ASSERT_EQ(outline.subcommands.size(), 2U);
  EXPECT_EQ(toText(outline.subcommands[0]),
            "sample show: Show samples\n"
            "FILE <> {} = required repeated: What to show\n"
            "-h|--help <> {} =: Print this help message and exit\n"
            "-d|--data <DIR> {} =: Folder: [of] 'data'\n"
            "--form <FORM> {long|short} =long: The form\n"
            "Samples \\ stay.|Lines:\n  .as they are|Examples:\n  sample show a-b|"
            "Exit status: 0 shown.\n");
  EXPECT_EQ(toText(outline.subcommands[1]),
            "sample list: List them\n"
            "-h|--help <> {} =: Print this help message and exit\n"
            "-q|--quiet <> {} =: Say nothing\n"
            "\n");
}

}  // namespace
