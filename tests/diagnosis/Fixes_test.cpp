// What a finding's fix does to a document.

#include <algorithm>
#include <cstddef>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagnosis/source/SourceTree.h"
#include "install/update_metadata_parser/Diagnosis.h"
#include "support/Effort.h"
#include "support/LoadOutcome.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

std::string apply(const Fix& fix, std::string text) {
  return text.replace(fix.offset, fix.length, fix.replacement);
}

// --- one fix of each kind -------------------------------------------------------------------

/// Parts of a document before and after a fix; the rest has no fix.
struct FixedPart {
  const char* name;
  const char* rule;
  bool isSafe;
  std::string before;
  std::string after;
};

std::ostream& operator<<(std::ostream& out, const FixedPart& row) {
  return out << row.name;
}

// The first fix for a rule, if there is one.
std::optional<Fix> firstFix(const std::string& text, std::string_view rule) {
  for (const Finding& finding : diagnose(text).findings) {
    if (finding.rule == rule && finding.fix) {
      return finding.fix;
    }
  }
  return std::nullopt;
}

class FixOfATextThatIsNotJson : public ::testing::TestWithParam<FixedPart> {};

TEST_P(FixOfATextThatIsNotJson, ChangesNothingElse) {
  const auto& [name, rule, isSafe, before, after] = GetParam();
  const std::optional<Fix> fix = firstFix(before, rule);
  ASSERT_TRUE(fix);
  EXPECT_EQ(apply(*fix, before), after);
  EXPECT_EQ(fix->isSafe, isSafe);
}

constexpr const char* kAround = "text-around-value";
constexpr const char* kMalformed = "malformed-text";

const FixedPart kTexts[] = {
    {"ByteOrderMark", kAround, true, "\xEF\xBB\xBF{}", "{}"},
    {"SpaceBefore", kAround, true, "\r\n {}", "{}"},
    {"LineFeed", kAround, true, "{}\n", "{}"},
    {"SpaceAfter", kAround, true, "{}\t\r\n\n", "{}"},
    {"BracketAfter", kAround, true, "{} }\n", "{}"},
    {"CommaAfter", kAround, true, "{},\n", "{}"},
    {"CommentAfter", kAround, true, "{} // end\n/* of, */ ", "{}"},
    {"ZerosAfter", kAround, true, {"{}\0\0\x1A", 5}, "{}"},
    {"TextAfter", kAround, false, "{}\nEND OF FILE", "{}"},
    {"DocumentAfter", kAround, false, "{} {}", "{}"},
    {"TrailingCommaInAnObject", kMalformed, true, "{\"a\": 1 , }", "{\"a\": 1  }"},
    {"TrailingCommaInAnArray", kMalformed, true, "{\"a\": [1,\n]}", "{\"a\": [1\n]}"},
    {"MissingCommaBetweenMembers", kMalformed, true, "{\"a\": {\"b\": []}\n \"c\": 1}",
     "{\"a\": {\"b\": []},\n \"c\": 1}"},
    {"MissingCommaBetweenElements", kMalformed, true, "[\"a\"\t\"b\"]", "[\"a\",\t\"b\"]"},
    {"MissingCommaBeforeAComment", kMalformed, true, "{\"a\": 1 # one\n \"c\": 1}",
     "{\"a\": 1\n \"c\": 1}"},
    {"CommentInALine", kMalformed, true, "{\"a\": 1, // one\r\n \"c\": 1}",
     "{\"a\": 1,\r\n \"c\": 1}"},
    {"CommentOnALine", kMalformed, true, "{\n  // one\n  /* two */\r\n\"c\": 1}", "{\n\"c\": 1}"},
    {"CommentBefore", kMalformed, true, "// one\n// two\n{\"c\": 1}", "{\"c\": 1}"},
    {"CommentsOfEveryKind", kMalformed, true, "{/*a*/\"b\"/*\n*/: \"// no\" //c\n, /**/\"d\": 1}",
     "{\"b\": \"// no\"\n,\"d\": 1}"},
    {"CommentBetweenNumbers", kMalformed, true, "[1/**/,/**/2/*]*/,3]", "[1,2,3]"},
    {"HashOnALine", kMalformed, true, "{\n  # one\n\"c\": 1}", "{\n\"c\": 1}"},
    {"HashThatMayBeMore", kMalformed, false, "{\"c\": 1 #, \"d\": 2}\n}", "{\"c\": 1\n}"},
    {"SingleQuotes", kMalformed, false, "{'a': 'it\\'s \"b\"', \"c\": 'd\\n', 'e'}",
     "{\"a\": \"it's \\\"b\\\"\", \"c\": \"d\\n\", \"e\"}"},
    {"Backticks", kMalformed, false, "[`a`, 1]", "[\"a\", 1]"},
    {"CurlyQuotes", kMalformed, false, "{\xE2\x80\x9C\xC3\xBC\xE2\x80\x9D: 1}",
     "{\"\xC3\xBC\": 1}"},
    {"UnquotedKeys", kMalformed, false, "{a: 1, b_2 : {c:\"d: e\"}, \"f\": f}",
     "{\"a\": 1, \"b_2\" : {\"c\":\"d: e\"}, \"f\": f}"},
    {"WordsOfOtherLanguages", kMalformed, false, "[None, True, false, 1, FALSE, what]",
     "[null, true, false, 1, false, what]"},
    {"OldLiteral", kMalformed, false, "{\"a\": nil}", "{\"a\": null}"},
    {"EqualsSign", kMalformed, false, "{\"a\" => 1}", "{\"a\" : 1}"},
    {"Semicolon", kMalformed, false, "{\"a\": 1; \"b\": 2}", "{\"a\": 1, \"b\": 2}"},
};
INSTANTIATE_TEST_SUITE_P(Texts, FixOfATextThatIsNotJson, ::testing::ValuesIn(kTexts),
                         [](const auto& row) { return row.param.name; });

const std::string kRelease =
    R"({"zelvan_version": "", "date": "", "version": "1", "prerelease": false,)"
    R"( "release": "F", "checksum": "", "description": "", "update": )";

// A document with this update level, these components, packages of the only component to extract,
// and products.
std::string documentWith(const std::string& sections) {
  return R"({"metadata": {"arch": "any", "base": null, "target": )" + kRelease + "1}}, " +
         sections + "}";
}

const std::string kNoFiles = R"(, "componentsWithFilesDeleted": {})";
const std::string kCore = R"("core": {"delete": {}, "extract": {}})";
const std::string kSuite = R"("Suite": {"delete": ["core"], "extract": ["core"]})";

// A document with the components of one package with this size.
std::string withSize(const std::string& size) {
  return documentWith(R"("components": {"core": {"extract": {}, "delete": {"old": {"size": )" +
                      size + R"(}}}}, "products": {)" + kSuite + "}" + kNoFiles);
}

std::string withProducts(const std::string& products) {
  return documentWith(R"("components": {)" + kCore + R"(}, "products": {)" + products + "}" +
                      kNoFiles);
}

std::string withLevel(const std::string& level) {
  return R"({"metadata": {"arch": "any", "base": null, "target": )" + kRelease + level +
         R"(}}, "components": {}, "products": {})" + kNoFiles + "}";
}

class FixOfADocument : public ::testing::TestWithParam<FixedPart> {};

TEST_P(FixOfADocument, ChangesNothingElse) {
  const auto& [name, rule, isSafe, before, after] = GetParam();
  const std::optional<Fix> fix = firstFix(before, rule);
  ASSERT_TRUE(fix);
  EXPECT_EQ(apply(*fix, before), after);
  EXPECT_EQ(fix->isSafe, isSafe);
  EXPECT_TRUE(diagnose(after).loads());
}

const FixedPart kDocuments[] = {
    {"RepeatedKey", "repeated-key", true, withProducts(kSuite + " , \"S\\u0075ite\": [1]"),
     withProducts(kSuite)},
    {"RepeatedSize", "repeated-key", true, withSize("1, \"x\": [], \"size\": \"\" "),
     withSize("1, \"x\": [] ")},
    {"UnlistedMember", "unlisted-member", false,
     documentWith(R"("Components": {}, "products": {})" + kNoFiles),
     documentWith(R"("components": {}, "products": {})" + kNoFiles)},
    {"NullSection", "null-section", true,
     documentWith(R"("components": null, "products": {})" + kNoFiles),
     documentWith(R"("components": {}, "products": {})" + kNoFiles)},
    {"FractionalSize", "fractional-size", true, withSize("12.9"), withSize("12")},
    {"SmallNegativeSize", "fractional-size", true, withSize("-0.5"), withSize("0")},
    {"LargeFractionalSize", "fractional-size", true, withSize("4503599627370497.5"),
     withSize("4503599627370498")},
    {"UpdateLevelBeyondAByte", "update-level", true, withLevel("200"), withLevel("-56")},
    {"FractionalUpdateLevel", "update-level", true, withLevel("37e-1"), withLevel("3")},
    {"HugeUpdateLevel", "update-level", true, withLevel("1e300"), withLevel("0")},
    {"ComponentNamedTwice", "component-named-twice", true,
     withProducts(R"("Suite": {"delete": [], "extract": ["core", "c\u006fre" ]})"),
     withProducts(R"("Suite": {"delete": [], "extract": ["core" ]})")},
    {"ComponentNamedThreeTimes", "component-named-twice", true,
     withProducts(R"("Suite": {"delete": [], "extract": ["core", "x", "core", "core"]})"),
     withProducts(R"("Suite": {"delete": [], "extract": ["core", "x", "core"]})")},
    {"OnlyProductWithoutWork", "product-without-work", true,
     withProducts(R"( "P": {"delete": [], "extract": []} )"), withProducts("  ")},
    {"FirstProductWithoutWork", "product-without-work", true,
     withProducts(R"("P": {"delete": [], "extract": []}, )" + kSuite), withProducts(kSuite)},
    {"LastProductWithoutWork", "product-without-work", true,
     withProducts(kSuite + R"(, "P": {"delete": [], "extract": []})"), withProducts(kSuite)},
};
INSTANTIATE_TEST_SUITE_P(Documents, FixOfADocument, ::testing::ValuesIn(kDocuments),
                         [](const auto& row) { return row.param.name; });

// --- where there is no obvious fix ----------------------------------------------------------

struct UnfixedText {
  const char* name;
  const char* rule;
  std::string text;
};

std::ostream& operator<<(std::ostream& out, const UnfixedText& row) {
  return out << row.name;
}

class Problem : public ::testing::TestWithParam<UnfixedText> {};

TEST_P(Problem, HasNoFix) {
  std::size_t count = 0;
  for (const Finding& finding : diagnose(GetParam().text).findings) {
    if (finding.rule == GetParam().rule) {
      ++count;
      EXPECT_FALSE(finding.fix);
    }
  }
  EXPECT_GE(count, 1U);
}

const UnfixedText kUnfixed[] = {
    {"DocumentThatIsClosedTooEarly", kAround, R"({"a": {}}, "b": {}})"},
    {"StringThatIsNotAName", kMalformed, R"({"a": "said "" or" "})"},
    {"TrailingCommaBeforeTheWrongBracket", kMalformed, "{\"a\": [1,}}"},
    {"CommentWithoutEnd", kMalformed, "{ /* \"a\": 1}"},
    {"CommentAtTheEnd", kMalformed, "{ // \"a\": 1}"},
    {"CommentInsteadOfAValue", kMalformed, "{\"a\": #fff\n}"},
    {"UnknownWord", kMalformed, "{\"a\": what}"},
    {"SingleQuoteWithoutEnd", kMalformed, "{\"a\": 'b\n}"},
    {"BytesInSingleQuotes", kMalformed, "{\"a\": '\xFF'}"},
    {"RepeatedTypeName", "repeated-key", R"({"qztype": "int8", "qztype": "x"})"},
    {"UnlistedMemberOfAnotherKind", "unlisted-member", R"({"Components": 5})"},
    {"UnlistedMemberThatResemblesNone", "unlisted-member", R"({"note": {}})"},
    {"NullRelease", "null-release", documentWith(R"("components": {}, "products": {})" + kNoFiles)},
    {"ProductThatIsRepeated", "product-without-work",
     withProducts(
         R"("P": {"delete": [], "extract": []}, "P": {"delete": [], "extract": ["core"]})")},
};
INSTANTIATE_TEST_SUITE_P(Texts, Problem, ::testing::ValuesIn(kUnfixed),
                         [](const auto& row) { return row.param.name; });

TEST(FixOfAnUnlistedMember, IsOnlyThatOfTheFirstThatResemblesTheMissingOne) {
  const std::vector<Finding> findings = diagnose(R"({"Products": {}, "product": {}})").findings;
  std::vector<bool> fixes;
  for (const Finding& finding : findings) {
    if (finding.rule == "unlisted-member") {
      fixes.push_back(finding.fix.has_value());
    }
  }
  EXPECT_EQ(fixes, (std::vector<bool>{true, false}));
}

// --- every safe fix keeps its promise -------------------------------------------------------

// How many bytes the library does not get to read; 0 for JSON.
std::size_t unreadBytes(const std::string& text) {
  const source::SourceTree tree(text);
  return tree.fault() ? text.size() - tree.fault()->offset + 1 : 0;
}

// These change what the handler receives, but no answer.
bool changesCalls(std::string_view rule) {
  return rule == "component-named-twice" || rule == "update-level";
}

::testing::AssertionResult keepsPromises(const std::string& text) {
  const Diagnosis before = diagnose(text);
  for (const Finding& finding : before.findings) {
    if (!finding.fix) {
      continue;
    }
    const Fix& fix = *finding.fix;
    if (fix.offset > text.size() || fix.length > text.size() - fix.offset) {
      return ::testing::AssertionFailure() << finding.rule << " beyond the text " << text;
    }
    const std::string fixed = apply(fix, text);
    if (fixed == text) {
      return ::testing::AssertionFailure() << finding.rule << " changes nothing in " << text;
    }
    if (before.loads() && !changesCalls(finding.rule) &&
        test_support::loadOutcomeOf(fixed).calls != test_support::loadOutcomeOf(text).calls) {
      return ::testing::AssertionFailure() << finding.rule << '\n' << text << '\n' << fixed;
    }
    if (before.loads() && !diagnose(fixed).loads()) {
      return ::testing::AssertionFailure() << finding.rule << '\n' << text << '\n' << fixed;
    }
    // Only the first error of a text that is not JSON keeps the library from reading on.
    const bool isFirst = &finding == &before.findings.front();
    const bool isSyntax = finding.rule == kMalformed || finding.rule == kAround;
    if (fix.isSafe && isFirst && isSyntax && unreadBytes(fixed) >= unreadBytes(text)) {
      return ::testing::AssertionFailure() << finding.message << '\n' << text << '\n' << fixed;
    }
  }
  return ::testing::AssertionSuccess();
}

TEST(SafeFixes, KeepTheirPromiseWhateverIsInserted) {
  constexpr const char* kInserted[] = {
      "\n",
      " ",
      "\xEF\xBB\xBF",
      ",",
      "// x\n",
      "/* x */",
      "# x\n",
      "'x'",
      "None",
      "x: 1",
      "}",
      "]",
      ";",
      "\"x\" ",
      "1",
      "\"x\": 1, \"x\": 2,",
      "null,",
      "{}",
      "200",
      "1.5",
      "\"c\",",
      "=",
      "",
  };
  const std::string document = test_support::variedDocument();
  std::size_t count = 0;
  for (std::size_t offset = 0; offset <= document.size(); ++offset) {
    for (const char* inserted : kInserted) {
      const std::size_t length = offset % 2;  // every other one replaces a byte
      if (test_support::kFullEffort || ++count % 61 == 0) {
        std::string text = document;
        ASSERT_TRUE(keepsPromises(text.replace(offset, length, inserted)));
      }
    }
  }
}

TEST(SafeFixes, KeepTheirPromiseWhateverNodesAreReplaced) {
  const std::string document = test_support::variedDocument();
  const source::SourceTree tree(document);
  std::mt19937_64 random(11);
  const int rounds = test_support::kFullEffort ? 20'000 : 200;
  for (int round = 0; round < rounds; ++round) {
    const source::SourceNode& place = tree[random() % tree.nodes().size()];
    const source::SourceNode& other = tree[random() % tree.nodes().size()];
    std::string text = document;
    text.replace(place.begin, place.end - place.begin, document, other.begin,
                 other.end - other.begin);
    ASSERT_TRUE(keepsPromises(text));
  }
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
