#include "input/LoadRecord.h"

#include <ostream>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace update_metadata_tool::fmt {
namespace {

using input::recordLoad;

using ::testing::StrEq;
using ::testing::ThrowsMessage;

const std::string kRecorded =
    R"({"metadata":{"arch":"x86","base":{"zelvan_version":"","date":"","version":"7.1",)"
    R"("prerelease":false,"release":"Fernlight 7","checksum":"","description":"","update":0},)"
    R"("target":{"zelvan_version":"","date":"","version":"7.2","prerelease":false,)"
    R"("release":"Fernlight 8","checksum":"","description":"","update":3}},)"
    R"("components":{"core":{"delete":{"old":{"size":11}},)"
    R"("extract":{"new":{"size":12,"uncompressedBytes":13},"newer":{"size":14,)"
    R"("uncompressedBytes":15}}}},)"
    R"("products":{"Editor":{"delete":["core"],"extract":["core","help"]}},)"
    R"("componentsWithFilesDeleted":{"help":{"guide":{"size":16,"files":["a.txt","b.txt"]}},)"
    R"("docs":{}}})";

std::u16string recordOf(const std::string& text) {
  return recordLoad(u"update.json", text);
}

struct Change {
  const char* name;
  const char* from;
  const char* to;
};

std::ostream& operator<<(std::ostream& out, const Change& row) {
  return out << row.name;
}

std::string apply(const Change& change) {
  std::string text = kRecorded;
  const std::size_t place = text.find(change.from);
  return place == std::string::npos
             ? ""
             : text.replace(place, std::string(change.from).size(), change.to);
}

class ChangesThatAreRead : public ::testing::TestWithParam<Change> {};

TEST_P(ChangesThatAreRead, ChangeTheRecord) {
  EXPECT_NE(recordOf(apply(GetParam())), recordOf(kRecorded));
}

const Change kChangesThatAreRead[] = {
    {"Architecture", "x86", "x64"},
    {"BaseVersion", "7.1", "7.0"},
    {"BaseFamily", "Fernlight 7", "Fernlight 6"},
    {"TargetVersion", "7.2", "7.3"},
    {"TargetFamily", "Fernlight 8", "Fernlight 9"},
    {"UpdateLevel", "\"update\":3", "\"update\":4"},
    {"Component", "\"core\":", "\"Core\":"},
    {"PackageToDelete", "old", "Old"},
    {"SizeToDelete", "11", "-11"},
    {"PackageToExtract", "new", "New"},
    {"SizeToExtract", "12", "1e18"},
    {"UnpackedSize", "13", "14"},
    {"FewerPackages", R"(,"newer":{"size":14,"uncompressedBytes":15})", ""},
    {"Product", "Editor", "Viewer"},
    {"ComponentToDelete", "[\"core\"]", "[\"gone\"]"},
    {"ComponentToExtract", "\"help\"]", "\"docs\"]"},
    {"ComponentOnTheOtherSide", R"(["core"],"extract":["core","help"])",
     R"(["core","core"],"extract":["help"])"},
    {"NameCutInTwo", R"(["core","help"])", R"(["co","re","help"])"},
    {"ComponentWithFiles", "\"help\":", "\"more\":"},
    {"PackageWithFiles", "guide", "Guide"},
    {"SizeOfAPackageWithFiles", "16", "17"},
    {"File", "a.txt", "c.txt"},
    {"OrderOfFiles", R"("a.txt","b.txt")", R"("b.txt","a.txt")"},
    {"ComponentWithoutFiles", R"(,"docs":{})", ""},
};
INSTANTIATE_TEST_SUITE_P(Changes, ChangesThatAreRead, ::testing::ValuesIn(kChangesThatAreRead),
                         [](const auto& row) { return row.param.name; });

class ChangesThatAreNotRead : public ::testing::TestWithParam<Change> {};

TEST_P(ChangesThatAreNotRead, DoNotChangeTheRecord) {
  ASSERT_NE(apply(GetParam()), kRecorded);
  EXPECT_EQ(recordOf(apply(GetParam())), recordOf(kRecorded));
}

const Change kChangesThatAreNotRead[] = {
    {"WhiteSpace", "{\"arch\"", "{ \n\"arch\""},
    {"SpellingOfAName", "Editor", "\\u0045ditor"},
    {"SpellingOfANumber", "12", "12.5"},
    {"Date", "\"date\":\"\"", "\"date\":\"today\""},
    {"UnlistedMember", "\"arch\"", "\"note\":1,\"arch\""},
    {"RepeatedKey", "\"size\":11", "\"size\":11,\"size\":12"},
};
INSTANTIATE_TEST_SUITE_P(Changes, ChangesThatAreNotRead,
                         ::testing::ValuesIn(kChangesThatAreNotRead),
                         [](const auto& row) { return row.param.name; });

TEST(LoadRecord, PassesTheLibrarysExceptionsThrough) {
  EXPECT_THAT([] { recordOf(kRecorded + '\n'); },
              ThrowsMessage<std::runtime_error>(StrEq("Error while parsing update.json")));
  EXPECT_THAT([] { recordOf("{}"); }, ThrowsMessage<std::out_of_range>(StrEq("map::at")));
}

}  // namespace
}  // namespace update_metadata_tool::fmt
