#include "plan/InstalledTree.h"

#include <filesystem>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace update_metadata_tool::plan {
namespace {

using test_support::TemporaryFolder;

struct SearchedFile {
  const char* name;
  std::u16string path;
  FileState state;
};

std::ostream& operator<<(std::ostream& out, const SearchedFile& row) {
  return out << row.name;
}

class SearchedFiles : public ::testing::TestWithParam<SearchedFile> {
 protected:
  SearchedFiles() {
    folder_.writeFile("tree/a.txt", "");
    folder_.writeFile("tree/docs/b.txt", "");
    folder_.writeFile("other/c.txt", "");
    folder_.writeFile("tree2/d.txt", "");
  }

  TemporaryFolder folder_;
};

TEST_P(SearchedFiles, AreFoundAsTheSystemFindsThem) {
  const InstalledTree tree(std::filesystem::path(folder_.path("tree")));
  const InstalledFile file = tree.find(GetParam().path);
  EXPECT_STREQ(nameOf(file.state), nameOf(GetParam().state)) << file.detail;
}

const SearchedFile kSearchedFiles[] = {
    {"File", u"a.txt", FileState::kPresent},
    {"FileBelow", u"docs/b.txt", FileState::kPresent},
    {"FileBelowABackslash", u"docs\\b.txt", FileState::kPresent},
    {"OtherCase", u"DOCS/B.TXT", FileState::kPresent},
    {"UpAndDown", u"docs/../a.txt", FileState::kPresent},
    {"UpFromAMissingFolder", u"none/../a.txt", FileState::kPresent},
    {"Folder", u"docs", FileState::kFolder},
    {"Missing", u"b.txt", FileState::kMissing},
    {"BelowAMissingFolder", u"none/b.txt", FileState::kMissing},
    {"Nul", std::u16string(u"a.txt\0", 6), FileState::kMissing},
    {"UnpairedSurrogate", std::u16string(1, char16_t{0xD83D}), FileState::kMissing},
    {"Beside", u"../other/c.txt", FileState::kOutside},
    {"BesideWithBackslashes", u"..\\other\\c.txt", FileState::kOutside},
    {"BesideAndMissing", u"../nothing", FileState::kOutside},
    {"BesideWithTheSameBeginning", u"../tree2/d.txt", FileState::kOutside},
    {"TreeItself", u"docs/..", FileState::kOutside},
    {"Empty", u"", FileState::kOutside},
    {"Absolute", u"/a.txt", FileState::kOutside},
    {"OtherDrive", u"Q:\\a.txt", FileState::kOutside},
};
INSTANTIATE_TEST_SUITE_P(Paths, SearchedFiles, ::testing::ValuesIn(kSearchedFiles),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::plan
