#include "SampleProgram.h"

namespace test_support {

SampleProgram::SampleProgram() {
  app_.name("sample");
  app_.description("Shows samples.");
  app_.set_version_flag("--version", "sample 1");

  CLI::App& show = *app_.add_subcommand("show", "Show samples");
  show.add_option("FILE", files_, "What to show")->required()->type_name("");
  show.add_option("-d,--data", folder_, "Folder: [of] 'data'")->type_name("DIR");
  show.add_option("--form", form_, "The form")
      ->type_name("FORM")
      ->check(CLI::IsMember({"long", "short"}))
      ->capture_default_str();
  show.footer(
      "Samples \\ stay.\n\nLines:\n  .as they are\n\nExamples:\n  sample show a-b\n\n"
      "Exit status: 0 shown.");

  CLI::App& list = *app_.add_subcommand("list", "List them");
  list.add_flag("-q,--quiet", isQuiet_, "Say nothing");
}

}  // namespace test_support
