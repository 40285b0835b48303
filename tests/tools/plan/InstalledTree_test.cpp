#include "plan/InstalledTree.h"

#include <filesystem>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "support/TemporaryFolder.h"

namespace update_metadata_tool::plan {

static bool operator==(const InstalledFile& left, const InstalledFile& right) {
  return left.state == right.state && left.detail == right.detail;
}

static std::ostream& operator<<(std::ostream& out, const InstalledFile& file) {
  return out << nameOf(file.state) << " '" << file.detail << '\'';
}

namespace {

using test_support::TemporaryFolder;

constexpr FileState kPresent = FileState::kPresent;
constexpr FileState kMissing = FileState::kMissing;
constexpr FileState kFolder = FileState::kFolder;
constexpr FileState kOutside = FileState::kOutside;
constexpr FileState kUnknown = FileState::kUnknown;

/// A tree "tree" with files and links, beside a folder "other" with a file.
class Installation : public ::testing::Test {
 protected:
  Installation() {
    folder_.writeFile("tree/a.txt", "");
    folder_.writeFile("tree/a\\b", "");
    folder_.writeFile("tree/docs/b.txt", "");
    folder_.writeFile("tree/docs/deep/e.txt", "");
    folder_.writeFile("tree/docs/\xC3\xBC \xF0\x9F\x97\xBA.txt", "");
    folder_.writeFile("other/c.txt", "");
    folder_.writeFile("tree2/d.txt", "");
    folder_.makeLink("tree/to-a", "a.txt");
    folder_.makeLink("tree/to-docs", "docs");
    folder_.makeLink("tree/docs/up", "..");
    folder_.makeLink("tree/to-nothing", "docs/nothing");
    folder_.makeLink("tree/out", "../other");
    folder_.makeLink("tree/out-file", folder_.nativePath("other/c.txt"));
    folder_.makeLink("tree/out-to-nothing", "../other/nothing");
    folder_.makeLink("tree/out-and-in", folder_.nativePath("other/../tree/docs"));
    folder_.makeLink("tree/loop", "loop");
    folder_.makeLink("tree/ping", "pong");
    folder_.makeLink("tree/pong", "ping");
    folder_.makeLink("linked-tree", "tree");
  }

  std::string real(const std::string& name) const {
    return std::filesystem::canonical(folder_.nativePath()).string() + '/' + name;
  }

  TemporaryFolder folder_;
};

struct SearchedFile {
  const char* name;
  std::u16string path;
  FileState state;
  std::string detail = {};  ///< of an outside file, relative to the folder that contains the tree
};

std::ostream& operator<<(std::ostream& out, const SearchedFile& row) {
  return out << row.name;
}

class SearchedFiles : public Installation, public ::testing::WithParamInterface<SearchedFile> {
 protected:
  InstalledFile expected() const {
    const SearchedFile& row = GetParam();
    return {row.state, row.state == kOutside ? real(row.detail) : row.detail};
  }
};

TEST_P(SearchedFiles, AreFoundWhereLinksAndDotsLead) {
  EXPECT_EQ(InstalledTree(folder_.nativePath("tree")).find(GetParam().path), expected());
}

TEST_P(SearchedFiles, AreFoundInATreeThatIsReachedThroughALink) {
  EXPECT_EQ(InstalledTree(folder_.nativePath("linked-tree/.")).find(GetParam().path), expected());
}

const std::string kNoName = "no file can have this name";
const std::string kBackslash = "a backslash does not separate folders here";
const std::string kTooManyLinks = "Too many levels of symbolic links";

const SearchedFile kSearchedFiles[] = {
    {"File", u"a.txt", kPresent},
    {"FileBelow", u"docs/b.txt", kPresent},
    {"FileWithAnyName", u"docs/\u00FC \U0001F5FA.txt", kPresent},
    {"FileWithABackslash", u"a\\b", kPresent},
    {"Folder", u"docs", kFolder},
    {"FolderWithASlash", u"docs/", kFolder},
    {"FolderByADot", u"docs/.", kFolder},
    {"FolderUpFromAFolder", u"docs/deep/..", kFolder},
    {"LinkToAFolder", u"to-docs", kPresent},
    {"LinkToAFolderWithASlash", u"to-docs/", kFolder},
    {"BackslashesForSlashes", u"docs\\b.txt", kMissing, kBackslash},
    {"UpByBackslashes", u"..\\other\\c.txt", kMissing, kBackslash},
    {"NoFile", u"b.txt", kMissing},
    {"NoFolder", u"none/b.txt", kMissing},
    {"BelowAFile", u"a.txt/b.txt", kMissing},
    {"DotsAndSlashes", u".//docs/./b.txt", kPresent},
    {"UpAndDown", u"docs/../a.txt", kPresent},
    {"UpFromNothing", u"none/../a.txt", kMissing},
    {"LinkToAFile", u"to-a", kPresent},
    {"ThroughALink", u"to-docs/b.txt", kPresent},
    {"UpFromWhereALinkLed", u"to-docs/../a.txt", kPresent},
    {"UpByALink", u"docs/up/a.txt", kPresent},
    {"LinkToNothing", u"to-nothing", kPresent},
    {"ThroughALinkToNothing", u"to-nothing/x", kMissing},
    {"LinkOutAndIn", u"out-and-in/b.txt", kPresent},
    {"OutAndIn", u"../tree/a.txt", kPresent},
    {"Out", u"../other/c.txt", kOutside, "other/c.txt"},
    {"OutToNothing", u"../nothing", kOutside, "nothing"},
    {"OutPastNothing", u"none/../../other", kOutside, "other"},
    {"OutFromWhereALinkLed", u"docs/up/../other/c.txt", kOutside, "other/c.txt"},
    {"OutThroughALink", u"out/c.txt", kOutside, "other/c.txt"},
    {"OutThroughALinkToNothing", u"out/none/x", kOutside, "other/none/x"},
    {"LinkOut", u"out-file", kOutside, "other/c.txt"},
    {"LinkOutToNothing", u"out-to-nothing", kOutside, "other/nothing"},
    {"NameThatBeginsLikeTheTree", u"../tree2/d.txt", kOutside, "tree2/d.txt"},
    {"TheTreeItself", u".", kOutside, "tree"},
    {"Nothing", u"", kOutside, "tree"},
    {"LinkToItself", u"loop", kUnknown, kTooManyLinks},
    {"LinksInACircle", u"ping/x", kUnknown, kTooManyLinks},
    {"Nul", std::u16string(u"a.txt\0", 6), kMissing, kNoName},
    {"UnpairedSurrogate", std::u16string{u'a', 0xD83D}, kMissing, kNoName},
    {"LongName", std::u16string(300, u'x'), kMissing},
    {"LongPath", u"docs" + std::u16string(100'000, u'/'), kMissing},
};
INSTANTIATE_TEST_SUITE_P(Paths, SearchedFiles, ::testing::ValuesIn(kSearchedFiles),
                         [](const auto& row) { return row.param.name; });

TEST_F(Installation, AcceptsAbsolutePaths) {
  const InstalledTree tree(folder_.nativePath("tree"));
  EXPECT_EQ(tree.find(folder_.path("tree/a.txt")), (InstalledFile{kPresent}));
  EXPECT_EQ(tree.find(folder_.path("tree/none")), (InstalledFile{kMissing}));
  EXPECT_EQ(tree.find(folder_.path("other/c.txt")), (InstalledFile{kOutside, real("other/c.txt")}));
  EXPECT_EQ(tree.find(u"/../.."), (InstalledFile{kOutside, "/"}));
}

TEST_F(Installation, CanBeTheWholeFileSystem) {
  const InstalledTree tree("/");
  EXPECT_EQ(tree.find(folder_.path("tree/a.txt").substr(1)), (InstalledFile{kPresent}));
  EXPECT_EQ(tree.find(u"../.."), (InstalledFile{kOutside, "/"}));
}

// Each part takes constant time, even below a missing folder and where the path leads up and down.
TEST_F(Installation, IsSearchedForPathsOfAnyLength) {
  const InstalledTree tree(folder_.nativePath("tree"));
  std::u16string down;
  std::u16string upAndDown;
  for (int i = 0; i < 100'000; ++i) {
    down += u"none/";
    upAndDown += u"docs/../";
  }
  EXPECT_EQ(tree.find(down), (InstalledFile{kMissing}));
  EXPECT_EQ(tree.find(down + u"x").state, kMissing);
  EXPECT_EQ(tree.find(upAndDown + u"../other").state, kOutside);
}

TEST_F(Installation, IsAFolder) {
  EXPECT_THROW(InstalledTree(folder_.nativePath("none")), std::filesystem::filesystem_error);
  EXPECT_THROW(InstalledTree(folder_.nativePath("tree/a.txt")), std::filesystem::filesystem_error);
  EXPECT_THROW(InstalledTree(folder_.nativePath("tree/loop")), std::filesystem::filesystem_error);
}

}  // namespace
}  // namespace update_metadata_tool::plan
