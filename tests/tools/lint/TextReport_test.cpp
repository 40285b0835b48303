#include "lint/TextReport.h"

#include <cstddef>
#include <ostream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tools/lint/SampleReports.h"

namespace update_metadata_tool::lint {
namespace {

TEST(TextReport, ShowsEveryFindingThenWhatTheLibraryDoesThenTheTotals) {
  EXPECT_EQ(
      test_support::reportOnAllSamples<TextReport>(false),
      "a folder/update.json:1:1: info: a section is null [null-section]\n"
      "  {\n"
      "  ^\n"
      "  help: look\n"
      "\n"
      "a folder/update.json:4:5: warning: duplicate key '\xC3\xBC' [repeated-key]\n"
      "  \"\xC3\xBC\": { \"size\": 2 }\n"
      "  ^~~\n"
      "  in: package '\xC3\xBC'\n"
      "  at: /extract/\xC3\xBC\n"
      "  help: remove one of the two\n"
      "a folder/update.json:3:5: note: the value that is used\n"
      "  \"\xC3\xBC\": { \"size\": 1 },\n"
      "  ^\n"
      "\n"
      "a folder/update.json: 1 more finding not shown [null-section]\n"
      "a folder/update.json: 3 more findings not shown [empty-name]\n"
      "a folder/update.json: the library loads this document\n"
      "/srv/b<U+001B>.json:1:8: error: expected 'true' or 'false' for '<FF><U+001B>' "
      "[malformed-text]\n"
      "  {\"<FF>\": tru}\n"
      "           ^~~\n"
      "  in: member '<FF>'\n"
      "  at: /<FF>\n"
      "  help: correct the text\n"
      "\n"
      "/srv/b<U+001B>.json: the library rejects this document with std::runtime_error: "
      "\"Error while parsing /srv/b<U+001B>.json\"\n"
      "  message of the library's text reader:\n"
      "    JSON ParserException (E0002): Expected 'true' or 'false' (Line 1, Column 8)\n"
      "      {\"<FF>\": tru}\n"
      "            ^\n"
      "clean.json: the library loads this document\n"
      "3 files checked, 1 could not be read: 1 cannot be loaded; 1 error, 4 warnings, 2 infos\n");
}

TEST(TextReport, PaintsPlacesSeveritiesAndMarksForATerminalWithColors) {
  std::ostringstream out;
  TextReport report(out, true);
  report.write(test_support::repeatedKey());
  EXPECT_EQ(out.str(),
            "\x1B[1ma folder/update.json:1:1:\x1B[m \x1B[1;36minfo:\x1B[m a section is null "
            "[null-section]\n"
            "  {\n"
            "  \x1B[1;32m^\x1B[m\n"
            "  help: look\n"
            "\n"
            "\x1B[1ma folder/update.json:4:5:\x1B[m \x1B[1;35mwarning:\x1B[m duplicate key "
            "'\xC3\xBC' [repeated-key]\n"
            "  \"\xC3\xBC\": { \"size\": 2 }\n"
            "  \x1B[1;32m^~~\x1B[m\n"
            "  in: package '\xC3\xBC'\n"
            "  at: /extract/\xC3\xBC\n"
            "  help: remove one of the two\n"
            "\x1B[1ma folder/update.json:3:5:\x1B[m \x1B[1;36mnote:\x1B[m the value that is "
            "used\n"
            "  \"\xC3\xBC\": { \"size\": 1 },\n"
            "  \x1B[1;32m^\x1B[m\n"
            "\n"
            "a folder/update.json: 1 more finding not shown [null-section]\n"
            "a folder/update.json: 3 more findings not shown [empty-name]\n"
            "a folder/update.json: the library loads this document\n");
}

TEST(TextReport, ShowsNoLineThatIsBlank) {
  std::ostringstream out;
  FileReport empty = test_support::clean();
  empty.text = "\t\n{";
  empty.diagnosis.findings = {
      {"malformed-text", Severity::kError, "no text", "write one", 1, 1, 1, 2, "", "", {}, {}}};
  TextReport(out, false).write(empty);
  EXPECT_EQ(out.str(),
            "clean.json:1:2: error: no text [malformed-text]\n"
            "  help: write one\n"
            "\n"
            "clean.json: the library loads this document\n");
}

struct Summary {
  const char* name;
  LintTotals totals;
  std::string text;
};

std::ostream& operator<<(std::ostream& out, const Summary& row) {
  return out << row.name;
}

class SummaryLine : public ::testing::TestWithParam<Summary> {};

TEST_P(SummaryLine, LeavesOutWhatDidNotHappenToAFile) {
  std::ostringstream out;
  TextReport(out, false).finish(GetParam().totals);
  EXPECT_EQ(out.str(), GetParam().text);
}

const Summary kSummaries[] = {
    {"OneGood", {1, 1, 0, 0, 0, 0}, "1 file checked: no problems found\n"},
    {"OneDoubtful", {1, 1, 0, 0, 1, 0}, "1 file checked: 1 warning\n"},
    {"OneBad",
     {1, 0, 0, 1, 2, 1},
     "1 file checked: 1 cannot be loaded; 1 error, 2 warnings, 1 info\n"},
    {"OneBadWithoutFindings", {1, 0, 0, 0, 0, 0}, "1 file checked: 1 cannot be loaded\n"},
    {"OneUnread", {1, 0, 1, 0, 0, 0}, "0 files checked, 1 could not be read\n"},
    {"OneGoodOneUnread",
     {2, 1, 1, 0, 0, 0},
     "1 file checked, 1 could not be read: no problems found\n"},
    {"Many",
     {9, 4, 2, 5, 1, 7},
     "7 files checked, 2 could not be read: 3 cannot be loaded; 5 errors, 1 warning, 7 infos\n"},
};
INSTANTIATE_TEST_SUITE_P(Summaries, SummaryLine, ::testing::ValuesIn(kSummaries),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::lint
