#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "command/ExitCode.h"
#include "support/RunTool.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::fmt {

inline constexpr int kDone = static_cast<int>(command::ExitCode::kDone);
inline constexpr int kWouldChange = static_cast<int>(command::ExitCode::kFailed);
inline constexpr int kTrouble = static_cast<int>(command::ExitCode::kTrouble);

inline const std::string kCompact =
    R"({"metadata":{"arch":"","base":null,"target":null},"components":null,"products":{},)"
    R"("componentsWithFilesDeleted":null})";

inline const std::string kTwoBlanks =
    "{\n"
    "  \"metadata\": {\n"
    "    \"arch\": \"\",\n"
    "    \"base\": null,\n"
    "    \"target\": null\n"
    "  },\n"
    "  \"components\": null,\n"
    "  \"products\": {},\n"
    "  \"componentsWithFilesDeleted\": null\n"
    "}";

/// A folder with a document in the default form, one in another form, and a malformed one.
class Fmt : public ::testing::Test {
 protected:
  Fmt() {
    folder_.writeFile("good.json", kTwoBlanks);
    folder_.writeFile("other.json", "\xEF\xBB\xBF" + kCompact + "\r\n");
    folder_.writeFile("bad.json", "{x}");
    around_.folder = folder_.nativePath();
  }

  test_support::ToolRun run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "fmt");
    return test_support::runTool(arguments, around_);
  }

  std::string contentOf(const std::string& name) {
    return test_support::readBytes(folder_.nativePath(name));
  }

  std::set<std::string> names() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.nativePath())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  test_support::TemporaryFolder folder_;
  test_support::ToolSurroundings around_;
};

inline const std::string kBadComplaint =
    "Error while parsing bad.json\n"
    "update-metadata: 'bad.json' was not changed; correct the text at line 1, column 2: Expected "
    "a value or a string; 'update-metadata lint bad.json' shows more\n";

}  // namespace update_metadata_tool::fmt
