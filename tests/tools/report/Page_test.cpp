#include "report/Page.h"

#include <cstddef>
#include <ostream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "report/PageText.h"

namespace update_metadata_tool::report {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr std::string_view kBeforeData = R"(<script type="application/json" id="contents">)";

std::size_t countOf(std::string_view part, std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos;
       at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

// The text of the element with the data.
std::string dataOf(const std::string& page) {
  const std::size_t begin = page.find(kBeforeData) + kBeforeData.size();
  return page.substr(begin, page.find("</script>", begin) - begin);
}

TEST(ReportPage, IsOneWholeDocumentAroundTheData) {
  const std::string page = makePage(R"({"a":[1]})");
  EXPECT_THAT(page, StartsWith("<!DOCTYPE html>\n<html lang=\"en\">\n"));
  EXPECT_THAT(page, EndsWith("</script>\n</body>\n</html>\n"));
  EXPECT_EQ(dataOf(page), R"({"a":[1]})");
  EXPECT_EQ(countOf("</script>", page), 2U) << "the data and the script";
  EXPECT_EQ(countOf("</style>", page), 1U);
}

TEST(ReportPage, IsSelfContained) {
  EXPECT_THAT(std::string(kPageText), HasSubstr("default-src 'none'"));
  EXPECT_THAT(std::string(kPageText), Not(HasSubstr("://")));
  EXPECT_THAT(std::string(kPageText), Not(HasSubstr("@import")));
  EXPECT_THAT(std::string(kPageText), Not(HasSubstr("url(")));
}

TEST(ReportPage, NeverTurnsTextIntoMarkup) {
  for (const char* way : {"innerHTML", "outerHTML", "insertAdjacentHTML", "document.write", "eval(",
                          "new Function", "DOMParser", "setTimeout(", "fetch("}) {
    EXPECT_THAT(std::string(kPageText), Not(HasSubstr(way)));
  }
}

TEST(ReportPage, HasOnePlaceForTheData) {
  EXPECT_EQ(countOf("@CONTENTS@", kPageText), 1U);
  EXPECT_EQ(countOf("@STYLE@", kPageText) + countOf("@SCRIPT@", kPageText), 0U);
}

struct EscapedText {
  const char* name;
  const char* data;
  const char* expected;
};

std::ostream& operator<<(std::ostream& out, const EscapedText& row) {
  return out << row.name;
}

class ReportPageEscapes : public ::testing::TestWithParam<EscapedText> {};

TEST_P(ReportPageEscapes, CharactersWithAMeaningInHtml) {
  EXPECT_EQ(dataOf(makePage(GetParam().data)), GetParam().expected);
}

const EscapedText kEscapedTexts[] = {
    {"Nothing", "", ""},
    {"PlainText", R"(["plain \"text\" \u0000"])", R"(["plain \"text\" \u0000"])"},
    {"EndOfScript", R"(["</script>"])", R"(["\u003c/script\u003e"])"},
    {"CommentAndScript", R"(["<!--<script>"])", R"(["\u003c!--\u003cscript\u003e"])"},
    {"EndOfSection", R"(["]]>"])", R"(["]]\u003e"])"},
    {"CharacterReference", R"(["&lt;"])", R"(["\u0026lt;"])"},
    {"LineSeparator", "[\"a\xE2\x80\xA8z\"]", "[\"a\\u2028z\"]"},
    {"ParagraphSeparator", "[\"a\xE2\x80\xA9\"]", "[\"a\\u2029\"]"},
    {"NeighboursOfSeparators", "[\"\xE2\x80\xA7\xE2\x80\xAA\xE2\x82\xAC\"]",
     "[\"\xE2\x80\xA7\xE2\x80\xAA\xE2\x82\xAC\"]"},
    {"OtherCharacters", "[\"\xC3\xBC\xF0\x9F\x97\xBA\"]", "[\"\xC3\xBC\xF0\x9F\x97\xBA\"]"},
    {"PlaceOfData", R"(["@CONTENTS@"])", R"(["@CONTENTS@"])"},
    {"OneAfterTheOther", "<<&&>>", "\\u003c\\u003c\\u0026\\u0026\\u003e\\u003e"},
};
INSTANTIATE_TEST_SUITE_P(Texts, ReportPageEscapes, ::testing::ValuesIn(kEscapedTexts),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::report
