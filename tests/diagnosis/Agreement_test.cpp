// A diagnosis and the library agree on every document: there is an error exactly if the library
// rejects it.
#include "install/update_metadata_parser/Diagnosis.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "diagnosis/Text.h"
#include "diagnosis/source/SourceTree.h"
#include "reader/DocumentFile.h"
#include "support/Effort.h"
#include "support/LoadOutcome.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

std::vector<std::string> validDocuments() {
  return {test_support::variedDocument(),
          readDocument(toUtf16(UMP_SOURCE_DIR "/examples/documents/small/update.json"))};
}

std::string describeFindings(const Diagnosis& diagnosis) {
  std::string lines;
  for (const Finding& finding : diagnosis.findings) {
    lines += std::string(finding.rule) + " at " + std::to_string(finding.offset) + ": " +
             finding.message + '\n';
  }
  return lines;
}

// The failure of a text according to the naive reader of the tests.
std::string naiveFailureOf(const std::string& text) {
  return test_support::naiveLoadOutcomeOf(text).failure;
}

std::string predictedFailureOf(const Diagnosis& diagnosis) {
  return diagnosis.exception ? diagnosis.exception->type + ": " + diagnosis.exception->text
                             : "nothing";
}

// Compares the findings of a text with what the library does.
::testing::AssertionResult agrees(const std::string& text) {
  DiagnosisOptions options;
  options.path = u"document.json";
  const Diagnosis diagnosis = diagnose(text, options);
  const auto isError = [](const Finding& finding) { return finding.severity == Severity::kError; };
  const bool hasErrors = std::any_of(diagnosis.findings.begin(), diagnosis.findings.end(), isError);
  const auto isUnexplained = [](const Finding& finding) { return finding.rule == "refused"; };
  if (hasErrors == diagnosis.loads() ||
      std::any_of(diagnosis.findings.begin(), diagnosis.findings.end(), isUnexplained)) {
    return ::testing::AssertionFailure()
           << (diagnosis.loads() ? "loads" : diagnosis.exception->text) << '\n'
           << describeFindings(diagnosis) << text;
  }
  for (const Finding& finding : diagnosis.findings) {
    if (finding.offset > text.size() || finding.message.empty() || finding.advice.empty()) {
      return ::testing::AssertionFailure() << describeFindings(diagnosis) << text;
    }
  }
  if (naiveFailureOf(text) != predictedFailureOf(diagnosis)) {
    return ::testing::AssertionFailure()
           << naiveFailureOf(text) << " is not " << predictedFailureOf(diagnosis) << '\n'
           << text;
  }
  return ::testing::AssertionSuccess();
}

/// Selects the cases that are tried: all in full effort, otherwise one of `step`, a prime, so that
/// every kind of place and of change is among them.
class Selection {
 public:
  explicit Selection(std::size_t step) : step_(test_support::kFullEffort ? 1 : step) {}
  bool isTried() { return ++count_ % step_ == 0; }

 private:
  std::size_t step_;
  std::size_t count_ = 0;
};

TEST(DiagnosisAgreesWithTheLibrary, OnValidDocuments) {
  for (const std::string& document : validDocuments()) {
    EXPECT_TRUE(agrees(document));
  }
}

TEST(DiagnosisAgreesWithTheLibrary, OnEveryPrefix) {
  Selection selection(7);
  for (const std::string& document : validDocuments()) {
    for (std::size_t length = 0; length < document.size(); ++length) {
      ASSERT_TRUE(!selection.isTried() || agrees(document.substr(0, length)));
    }
  }
}

TEST(DiagnosisAgreesWithTheLibrary, OnEveryDeletionOfAByte) {
  Selection selection(7);
  for (const std::string& document : validDocuments()) {
    for (std::size_t offset = 0; offset < document.size(); ++offset) {
      ASSERT_TRUE(!selection.isTried() || agrees(std::string(document).erase(offset, 1)));
    }
  }
}

TEST(DiagnosisAgreesWithTheLibrary, OnBytesReplacedByOthers) {
  constexpr std::string_view kBytes("\0\n /\"'\\{}[]:,-+.09aeuntf\x7F\xC3\xA9\xFF", 29);
  Selection selection(61);
  const std::string document = test_support::variedDocument();
  for (std::size_t offset = 0; offset < document.size(); ++offset) {
    for (const char byte : kBytes) {
      std::string text = document;
      text[offset] = byte;
      ASSERT_TRUE(!selection.isTried() || agrees(text));
    }
  }
}

TEST(DiagnosisAgreesWithTheLibrary, OnEveryValueReplaced) {
  constexpr const char* kValues[] = {
      "null", "true",   "1",   "-2.5",           "\"text\"",
      "[]",   "{}",     "[1]", "{\"qztype\":1}", "{\"qztype\":\"int8\",\"qzdata\":[1]}",
      "1,",   "// x\n1"};
  Selection selection(7);
  for (const std::string& document : validDocuments()) {
    const source::SourceTree tree(document);
    for (const source::SourceNode& node : tree.nodes()) {
      for (const char* value : kValues) {
        ASSERT_TRUE(!selection.isTried() || agrees(std::string(document).replace(
                                                node.begin, node.end - node.begin, value)));
      }
    }
  }
}

// Removes a member or an element, with a comma beside it.
std::string without(const std::string& document, std::size_t begin, std::size_t end) {
  if (const std::size_t comma = document.find_first_not_of(" \n\r\t", end);
      document[comma] == ',') {
    return std::string(document).erase(begin, comma + 1 - begin);
  }
  const std::size_t comma = document.find_last_not_of(" \n\r\t", begin - 1);
  const std::size_t from = document[comma] == ',' ? comma : begin;
  return std::string(document).erase(from, end - from);
}

// The document with its member at `key` removed, repeated, repeated as null before and after
// itself, with text at its end, and renamed.
std::vector<std::string> changesOfMember(const std::string& document,
                                         const source::SourceTree& tree, std::size_t key) {
  const std::size_t begin = tree[key].begin;
  const std::size_t end = tree[key + 1].end;
  const std::string name(tree.written(key));
  std::vector<std::string> texts = {
      without(document, begin, end),
      std::string(document).insert(begin, document.substr(begin, end - begin) + ','),
      std::string(document).insert(begin, name + ":null,"),
      std::string(document).insert(end, ',' + name + ":null"),
      std::string(document).insert(end - 1, "x")};
  for (const char* other : {R"("qztype")", R"("qzdata")", R"("")", R"("size")"}) {
    texts.push_back(std::string(document).replace(begin, name.size(), other));
  }
  return texts;
}

TEST(DiagnosisAgreesWithTheLibrary, OnEveryMemberRemovedRepeatedOrRenamed) {
  Selection selection(7);
  for (const std::string& document : validDocuments()) {
    const source::SourceTree tree(document);
    for (std::size_t index = 0; index < tree.nodes().size(); ++index) {
      if (tree[index].kind != source::SourceKind::kKey) {
        continue;
      }
      for (const std::string& text : changesOfMember(document, tree, index)) {
        ASSERT_TRUE(!selection.isTried() || agrees(text));
      }
    }
  }
}

TEST(DiagnosisAgreesWithTheLibrary, OnDocumentsWithSeveralChanges) {
  const std::string document = test_support::variedDocument();
  const source::SourceTree tree(document);
  constexpr int kRounds = test_support::kFullEffort ? 20'000 : 600;
  std::mt19937_64 random(7);
  for (int round = 0; round < kRounds; ++round) {
    std::string text = document;
    // From the end, so places before a change stay the same.
    std::vector<std::size_t> nodes(1 + random() % 3);
    for (std::size_t& node : nodes) {
      node = random() % tree.nodes().size();
    }
    std::sort(nodes.rbegin(), nodes.rend());
    std::size_t behind = document.size();
    for (const std::size_t node : nodes) {
      const source::SourceNode& place = tree[node];
      const source::SourceNode& other = tree[random() % tree.nodes().size()];
      if (place.end <= behind) {
        text.replace(place.begin, place.end - place.begin, document, other.begin,
                     other.end - other.begin);
        behind = place.begin;
      }
    }
    ASSERT_TRUE(agrees(text));
  }
}

TEST(DiagnosisAgreesWithTheLibrary, OnTextAroundTheDocument) {
  for (const std::string& document : validDocuments()) {
    for (const char* around : {"\n", "\r\n", " ", "\xEF\xBB\xBF", "\xFF\xFE", "x", ",", "{}", "]",
                               "//\n", "/**/", "/*", "\"", "\0"}) {
      EXPECT_TRUE(agrees(document + around));
      EXPECT_TRUE(agrees(around + document));
      EXPECT_TRUE(agrees(around + document + around));
      EXPECT_TRUE(agrees(around));
    }
  }
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
