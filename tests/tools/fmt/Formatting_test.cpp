#include "fmt/Formatting.h"

#include <cstddef>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/Depth.h"
#include "support/Effort.h"
#include "support/LoadOutcome.h"
#include "support/RandomDocument.h"
#include "support/RunTool.h"

namespace update_metadata_tool::fmt {
namespace {

using test_support::LoadOutcome;
using test_support::loadOutcomeOf;
using test_support::readBytes;

constexpr Layout kLayouts[] = {{true, 0}, {false, 0}, {false, 2}, {false, 8}};

const std::string kDocument =
    R"({"metadata":{"arch":"","base":null,"target":null},"components":null,"products":null,)"
    R"("componentsWithFilesDeleted":null})";

std::string formatted(const std::string& text, const Layout& layout = {}) {
  return format(u"update.json", text, layout);
}

// The text and the advice of the rejection; empty if there is none.
std::string rejectionOf(const std::string& text) {
  try {
    formatted(text);
    return "";
  } catch (const RejectedText& rejected) {
    return std::string(rejected.what()) + "; " + rejected.advice();
  }
}

// The text without the white space between keys, values and punctuation, byte by byte.
std::string squeezed(std::string_view text) {
  std::string result;
  bool isInString = false;
  bool isEscaped = false;
  for (const char byte : text) {
    if (isInString || std::string_view(" \t\n\v\f\r").find(byte) == std::string_view::npos) {
      result += byte;
    }
    if (byte == '"' && !isEscaped) {
      isInString = !isInString;
    }
    isEscaped = byte == '\\' && !isEscaped;
  }
  return result;
}

// --- what is kept ---------------------------------------------------------------------------

// \param text  loads
void expectTheSameIsRead(const std::string& text) {
  const LoadOutcome outcome = loadOutcomeOf(text);
  ASSERT_EQ(outcome.failure, "nothing") << text;
  const std::string withoutSpace = squeezed(text);
  for (const Layout& layout : kLayouts) {
    const std::string result = formatted(text, layout);
    ASSERT_EQ(loadOutcomeOf(result), outcome) << text;
    ASSERT_EQ(squeezed(result), withoutSpace);
    ASSERT_EQ(formatted(result, layout), result) << text;
    ASSERT_EQ(layout.isCompact ? result : withoutSpace, withoutSpace);
  }
}

TEST(Formatting, KeepsWhatIsReadFromEveryGoldenDocumentThatLoads) {
  std::size_t documents = 0;
  for (const auto& entry :
       std::filesystem::directory_iterator(UMP_SOURCE_DIR "/tests/golden/cases")) {
    const std::string text = readBytes((entry.path() / "document.json").string());
    if (loadOutcomeOf(text).failure == "nothing") {
      expectTheSameIsRead(text);
      ++documents;
    } else {
      EXPECT_NE(rejectionOf(text), "") << entry.path();
    }
  }
  EXPECT_GT(documents, 20U);
}

TEST(Formatting, KeepsWhatIsReadFromDocumentsOfEveryForm) {
  expectTheSameIsRead(test_support::variedDocument());
  test_support::RandomDocument documents(7);
  const int documentCount = test_support::kFullEffort ? 3000 : 300;
  for (int count = 0; count < documentCount && !HasFatalFailure(); ++count) {
    const std::string text = documents.next();
    expectTheSameIsRead(text);
    ASSERT_EQ(formatted(documents.space() + text + documents.space()), formatted(text));
  }
}

TEST(Formatting, NeedsNoStackForADeepDocument) {
  constexpr std::size_t kDepth = 1000000;
  const std::string text = R"({"note":)" + std::string(kDepth, '[') + std::string(kDepth, ']') +
                           "," + kDocument.substr(1);
  test_support::runWithSmallStack([&text] {
    const std::string result = formatted(text);
    EXPECT_LT(result.size(), text.size() + 2000);
    EXPECT_TRUE(formatted(result, {true, 0}) == text);
  });
}

// --- what is stripped ----------------------------------------------------------------------

struct SurroundedText {
  const char* name;
  std::string text;
};

std::ostream& operator<<(std::ostream& out, const SurroundedText& row) {
  return out << row.name;
}

class SurroundedTexts : public ::testing::TestWithParam<SurroundedText> {};

TEST_P(SurroundedTexts, AreStripped) {
  EXPECT_NE(loadOutcomeOf(GetParam().text).failure, "nothing");
  EXPECT_EQ(formatted(GetParam().text, {true, 0}), kDocument);
}

const SurroundedText kSurroundedTexts[] = {
    {"FinalLineFeed", kDocument + '\n'},
    {"FinalCarriageReturn", kDocument + "\r\n"},
    {"EveryWhiteSpace", " \t\n\v\f\r" + kDocument + " \t\n\v\f\r"},
    {"ByteOrderMark", "\xEF\xBB\xBF" + kDocument},
    {"ByteOrderMarkAndWhiteSpace", "\xEF\xBB\xBF\r\n " + kDocument + "\n\n"},
};
INSTANTIATE_TEST_SUITE_P(Texts, SurroundedTexts, ::testing::ValuesIn(kSurroundedTexts),
                         [](const auto& row) { return row.param.name; });

// --- what is rejected ------------------------------------------------------------------------

struct Rejection {
  const char* name;
  std::string text;
  const char* rejection;
};

std::ostream& operator<<(std::ostream& out, const Rejection& row) {
  return out << row.name;
}

class Rejections : public ::testing::TestWithParam<Rejection> {};

TEST_P(Rejections, SayTheLibrarysTextAndWhatToDo) {
  EXPECT_EQ(rejectionOf(GetParam().text), GetParam().rejection);
}

const Rejection kRejections[] = {
    {"Nothing", "",
     "Error while parsing update.json; correct the text at line 1, column 1: Unexpected end of "
     "text; "
     "'update-metadata lint update.json' shows more"},
    {"WhiteSpaceAlone", "\n\n ",
     "Error while parsing update.json; correct the text at line 3, column 2: Unexpected end of "
     "text; "
     "'update-metadata lint update.json' shows more"},
    {"MalformedText", "{\"metadata\": {}\n  \"components\": {}}",
     "Error while parsing update.json; correct the text at line 2, column 3: Expected ',' or '}' "
     "after an object member; "
     "'update-metadata lint update.json' shows more"},
    {"PlaceInTheWholeFile", "\xEF\xBB\xBF\n\n {\"metadata\" 5}",
     "Error while parsing update.json; correct the text at line 3, column 14: Expected ':' after a "
     "member key; "
     "'update-metadata lint update.json' shows more"},
    {"PlaceAfterAByteOrderMark", "\xEF\xBB\xBF{x}",
     "Error while parsing update.json; correct the text at line 1, column 5: Expected a value or a "
     "string; "
     "'update-metadata lint update.json' shows more"},
    {"SecondValue", kDocument + "\n" + kDocument,
     "Error while parsing update.json; a document is one value; remove the text "
     "after it at line 2, column 1; "
     "'update-metadata lint update.json' shows more"},
    {"SecondByteOrderMark", "\xEF\xBB\xBF\xEF\xBB\xBF" + kDocument,
     "Error while parsing update.json; correct the text at line 1, column 4: Expected a value or a "
     "string; "
     "'update-metadata lint update.json' shows more"},
    {"TypeThatIsNotAString", "{\"a\":\n{\"qztype\": 5}}",
     "Error while parsing update.json; correct the text at line 2, column 12: Expected a string; "
     "'update-metadata lint update.json' shows more"},
    {"Payload", R"({"qztype":"int8","qzdata":[1.5]})",
     "Error while parsing update.json; correct the text at line 1, column 29: Expected an integer "
     "without fraction or exponent; "
     "'update-metadata lint update.json' shows more"},
    {"NotAnObject", " [] ",
     "Error while parsing update.json; a document must be an object; "
     "'update-metadata lint update.json' shows more"},
    {"MissingSection", R"({"metadata":{"arch":"","base":null,"target":null}})",
     "map::at; add the section \"components\" at the top of the document; "
     "'update-metadata lint update.json' shows where"},
    {"MissingMember", R"({"metadata":{}})",
     "Invalid data provided for 'arch'; correct the document: that member is missing somewhere or "
     "has a value of the wrong kind; 'update-metadata lint update.json' shows where"},
    {"NullMember", R"({"metadata":{"arch":null}})",
     "invalid conversion: null to string; correct the document: a value, possibly a missing "
     "one, has the first kind but must have the second; 'update-metadata lint update.json' shows "
     "where"},
};
INSTANTIATE_TEST_SUITE_P(Texts, Rejections, ::testing::ValuesIn(kRejections),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::fmt
