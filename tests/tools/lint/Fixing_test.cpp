#include "lint/Fixing.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "input/LoadRecord.h"
#include "support/Effort.h"

namespace update_metadata_tool::lint {
namespace {

using install::update_metadata_parser::DiagnosisOptions;

const std::string kDocument =
    R"({"metadata": {"arch": "any", "base": null, "target": {"zelvan_version": "", "date": "",
  "version": "1", "prerelease": false, "release": "F", "checksum": "", "description": "",
  "update": 1}},
 "components": {"core": {"delete": {"old": {"size": 1}},
   "extract": {"new": {"size": 2, "uncompressedBytes": 3}}}},
 "products": {"Suite": {"delete": ["core"], "extract": ["core"]}},
 "componentsWithFilesDeleted": {}})";

FixedText fix(const std::string& text, FixKinds kinds = FixKinds::kSafeAndSuggested) {
  return fixText(text, {}, {}, kinds);
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
  return text.replace(text.find(what), what.size(), with);
}

TEST(Fixing, LeavesATextWithoutFixesAsItIs) {
  for (const std::string& text : {kDocument, std::string("{"), std::string()}) {
    const FixedText fixed = fix(text);
    EXPECT_EQ(fixed.text, text);
    EXPECT_EQ(fixed.applied.size(), 0U);
    EXPECT_TRUE(fixed.unproved.empty());
  }
}

TEST(Fixing, RepairsTheFaultsOfAFirstDay) {
  std::string text = "\xEF\xBB\xBF" + kDocument + "\n";
  text = replaced(text, "\"arch\": \"any\"", "// the architecture\n arch: 'any'");
  text = replaced(text, "\"core\"]}},", "\"core\",]}}");
  text = replaced(text, "\"size\": 1}", "\"size\": 1, \"size\": 7}");
  const FixedText fixed = fix(text);
  EXPECT_EQ(fixed.text, replaced(kDocument, "\"arch\"", "\n \"arch\""));
  EXPECT_TRUE(fixed.diagnosis.loads());
  EXPECT_EQ(fix(fixed.text).applied.size(), 0U);
}

// The fixes are applied in several rounds, and each changes the offsets of the next ones.
TEST(Fixing, SaysWhereTheFaultsWereBeforeAnyFix) {
  std::string text = "\xEF\xBB\xBF" + kDocument;
  text = replaced(text, "\"arch\": \"any\"", "// the architecture\n arch: 'any'");
  text = replaced(text, "\"size\": 1}", "\"size\": 1.5; \"size\": 7}");
  text = replaced(text, "\"core\"]}},", "\"core\",]}}");
  std::string faults;
  for (const AppliedFix& applied : fix(text).applied) {
    faults += std::string(applied.rule) + " at " + text.substr(applied.offset, 8) + '\n';
  }
  EXPECT_EQ(faults,
            "text-around-value at \xEF\xBB\xBF{\"met\n"
            "malformed-text at // the a\n"
            "malformed-text at arch: 'a\n"
            "fractional-size at 1.5; \"si\n"
            "malformed-text at ; \"size\"\n"
            "repeated-key at \"size\": \n"
            "malformed-text at ,]}}\n \"c\n"
            "malformed-text at \"compone\n");
}

TEST(Fixing, AppliesSuggestedFixesOnlyOnRequest) {
  const std::string text = replaced(kDocument, "\"arch\"", "'arch'");
  const FixedText safe = fix(text, FixKinds::kSafe);
  EXPECT_EQ(safe.text, text);
  EXPECT_EQ(safe.suggested, 1U);
  EXPECT_EQ(fix(text).text, kDocument);
}

TEST(Fixing, LeavesTheRulesThatAreOff) {
  SeveritySettings settings;
  settings.add("fractional-size=off");
  const std::string text = replaced(kDocument, "\"size\": 1", "\"size\": 1.5") + "\n";
  EXPECT_EQ(fixText(text, {}, settings, FixKinds::kSafe).text,
            replaced(kDocument, "\"size\": 1", "\"size\": 1.5"));
  EXPECT_EQ(fix(text).text, kDocument);
}

TEST(Fixing, GetsAsFarAsItCan) {
  const FixedText fixed = fix("{\"a\": [1,], \"b\": what}\n", FixKinds::kSafe);
  EXPECT_EQ(fixed.text, "{\"a\": [1], \"b\": what}\n");
  EXPECT_FALSE(fixed.diagnosis.loads());
}

TEST(Fixing, DoesNotComplainOfAFixThatWaitsForASuggestedOne) {
  const std::string text = "{\"a\": 1,\n#\"b\": 2\n}";
  const FixedText fixed = fix(text, FixKinds::kSafe);
  EXPECT_EQ(fixed.text, text);
  EXPECT_EQ(fixed.suggested, 1U);
  EXPECT_TRUE(fixed.unproved.empty());
  EXPECT_EQ(fix(text).text, "{\"a\": 1\n}");
}

TEST(Fixing, AppliesSuggestionsThatLeaveFewerErrors) {
  const FixedText fixed = fix("{\"Components\": {}} END");
  EXPECT_EQ(fixed.text, "{\"components\": {}}");
  EXPECT_EQ(fixed.applied.size(), 2U);
  EXPECT_EQ(fix(replaced(kDocument, "\"arch\"", "\"Arch\"")).text, kDocument);
}

TEST(Fixing, RemovesProductsWithoutWorkOneBesideTheOther) {
  const std::string none = R"({"delete": [], "extract": []})";
  const std::string text = replaced(
      kDocument, "\"Suite\"",
      "\"A\": " + none + ", \"B\": " + none + ", \"A\": 5, \"C\": " + none + ", \"Suite\"");
  EXPECT_EQ(fix(text, FixKinds::kSafe).text, kDocument);
}

TEST(Fixing, CorrectsAWholeDocumentOfAnotherLanguage) {
  std::string text = kDocument;
  std::replace(text.begin(), text.end(), '"', '\'');
  EXPECT_EQ(fix(replaced(replaced(text, "false", "False"), "null", "None")).text, kDocument);
}

// Each semicolon is found once the one before it is fixed.
TEST(Fixing, StopsAfterSomeWorkAndGoesOnTheNextTime) {
  std::string text = "{";
  for (int member = 0; member < 100; ++member) {
    text += "\"" + std::to_string(member) + "\": 1; ";
  }
  text += "\"last\": 1}";
  const std::string commas = fix(text).text;
  EXPECT_EQ(std::count(commas.begin(), commas.end(), ';'), 0);
  FixedText fixed;
  int runs = 0;
  do {
    fixed = fixText(text, {}, {}, FixKinds::kSafeAndSuggested, 0);
    ASSERT_TRUE(!fixed.applied.empty() || !fixed.isStopped);
    text = fixed.text;
    ++runs;
  } while (fixed.isStopped);
  EXPECT_EQ(text, commas);
  EXPECT_GT(runs, 3);
  EXPECT_LT(runs, 50);
}

// --- random damage ----------------------------------------------------------------------------

/// One fault that can be put anywhere before a byte of a kind.
struct Fault {
  const char* before;
  const char* inserted;
};

constexpr Fault kFaults[] = {
    {"}", ","},
    {"]", ","},
    {",", " // x, \"y\"\n"},
    {":", "/* x */"},
    {"}", " # x\n"},
    {"\"core\"]", "\"core\", "},
    {"\"size\"", "\"size\": 5, "},
};

// Each damaged document loads again with the answers it had, except where a duplicate now comes
// first; and fixing it again changes nothing.
TEST(Fixing, RepairsRandomDamage) {
  std::mt19937_64 random(3);
  const int rounds = test_support::kFullEffort ? 20'000 : 150;
  for (int round = 0; round < rounds; ++round) {
    std::string text = kDocument;
    for (std::size_t count = 1 + random() % 4; count > 0; --count) {
      const Fault& fault = kFaults[random() % std::size(kFaults)];
      const std::size_t found = text.find(fault.before, random() % text.size());
      if (found != std::string::npos) {
        text.insert(found, fault.inserted);
      }
    }
    text = (random() % 2 == 0 ? "\xEF\xBB\xBF" : "") + text + (random() % 2 == 0 ? "\n" : "");
    const FixedText fixed = fix(text);
    const FixedText again = fix(fixed.text);
    ASSERT_EQ(again.text, fixed.text) << text;
    ASSERT_EQ(again.applied.size(), 0U);
    const DiagnosisOptions options;
    if (install::update_metadata_parser::diagnose(text, options).loads()) {
      ASSERT_EQ(input::recordAnswers(u"", fixed.text), input::recordAnswers(u"", text)) << text;
    }
  }
}

// Whatever is inserted where, a document that loads keeps its answers, and no text changes twice.
TEST(Fixing, KeepsTheAnswersWhateverIsInserted) {
  constexpr const char* kInserted[] = {",", "'", "\"", "}",   "// ", "/*",
                                       "#", "x", "{}", "1.5", ":"};
  std::mt19937_64 random(5);
  const int rounds = test_support::kFullEffort ? 20'000 : 150;
  for (int round = 0; round < rounds; ++round) {
    std::string text = kDocument;
    text.insert(random() % text.size(), kInserted[random() % std::size(kInserted)]);
    text.insert(random() % text.size(), kInserted[random() % std::size(kInserted)]);
    const FixedText fixed = fix(text);
    ASSERT_EQ(fix(fixed.text).text, fixed.text) << text;
    if (install::update_metadata_parser::diagnose(text, {}).loads()) {
      ASSERT_EQ(input::recordAnswers(u"", fixed.text), input::recordAnswers(u"", text)) << text;
    }
  }
}

}  // namespace
}  // namespace update_metadata_tool::lint
