#include "diagnosis/source/SourceTree.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "support/JsonOutcome.h"
#include "support/RandomJsonText.h"

namespace install::update_metadata_parser::diagnosis::source {
namespace {

using foundation::json::Array;
using foundation::json::Object;
using foundation::json::Value;

// One line per node, indented by its depth: its kind, its place, its text.
std::string drawn(const SourceTree& tree) {
  std::string drawing;
  std::vector<std::size_t> ends;
  for (std::size_t index = 0; index < tree.nodes().size(); ++index) {
    while (!ends.empty() && ends.back() <= index) {
      ends.pop_back();
    }
    const SourceNode& node = tree[index];
    drawing.append(2 * ends.size(), ' ');
    drawing += node.kind == SourceKind::kKey ? "key" : nameOf(node.kind);
    drawing += ' ' + std::to_string(node.begin) + '-' + std::to_string(node.end);
    if (node.kind == SourceKind::kArray || node.kind == SourceKind::kObject) {
      drawing += node.isClosed ? "" : " open";
      ends.push_back(node.next);
    } else {
      drawing += ' ' + std::string(tree.written(index));
    }
    drawing += '\n';
  }
  return drawing;
}

struct DrawnText {
  const char* name;
  const char* text;
  const char* drawing;
};

std::ostream& operator<<(std::ostream& out, const DrawnText& row) {
  return out << row.name;
}

class SourceNodes : public ::testing::TestWithParam<DrawnText> {};

TEST_P(SourceNodes, AreInTheOrderAndPlacesOfTheText) {
  EXPECT_EQ(drawn(SourceTree(GetParam().text)), GetParam().drawing);
}

const DrawnText kDrawnTexts[] = {
    {"Null", "null", "null 0-4 null\n"},
    {"Number", "-1.5e3", "double 0-6 -1.5e3\n"},
    {"String", R"("a\n")", "string 0-5 \"a\\n\"\n"},
    {"EmptyArray", "[ ]", "array 0-3\n"},
    {"EmptyObject", "{\n}", "object 0-3\n"},
    {"Array", "[true , [] ]",
     "array 0-12\n"
     "  boolean 1-5 true\n"
     "  array 8-10\n"},
    {"ObjectWithARepeatedKey", R"({"a" : 1, "a":{"b":null} })",
     "object 0-26\n"
     "  key 1-4 \"a\"\n"
     "  double 7-8 1\n"
     "  key 10-13 \"a\"\n"
     "  object 14-24\n"
     "    key 15-18 \"b\"\n"
     "    null 19-23 null\n"},
    {"PayloadAfterItsType", R"({"qztype":"int8","qzdata":[1 , -2]})",
     "object 0-35\n"
     "  key 1-9 \"qztype\"\n"
     "  string 10-16 \"int8\"\n"
     "  key 17-25 \"qzdata\"\n"
     "  array 26-34\n"
     "    int64 27-28 1\n"
     "    int64 31-33 -2\n"},
    {"PayloadBeforeItsType", R"({"qzdata":[1],"qztype":"int8","a":0})",
     "object 0-36\n"
     "  key 1-9 \"qzdata\"\n"
     "  array 10-13\n"
     "    double 11-12 1\n"
     "  key 14-22 \"qztype\"\n"
     "  string 23-29 \"int8\"\n"
     "  key 30-33 \"a\"\n"
     "  double 34-35 0\n"},
    {"Nothing", "", ""},
    {"BlankFirst", " 1", ""},
    {"TextAfter", "[1]\n",
     "array 0-3\n"
     "  double 1-2 1\n"},
    {"CutOffInAnObject", R"([{"a":1,"b":)",
     "array 0-12 open\n"
     "  object 1-12 open\n"
     "    key 2-5 \"a\"\n"
     "    double 6-7 1\n"},
    {"WrongInAnArray", "[1,[2,x],3]",
     "array 0-6 open\n"
     "  double 1-2 1\n"
     "  array 3-6 open\n"
     "    double 4-5 2\n"},
    {"PayloadNotOfIntegers", R"({"qzdata":[1,2.5],"qztype":"int8"})",
     "object 0-33 open\n"
     "  key 1-9 \"qzdata\"\n"
     "  array 10-17\n"
     "    double 11-12 1\n"
     "    double 13-16 2.5\n"
     "  key 18-26 \"qztype\"\n"
     "  string 27-33 \"int8\"\n"},
    {"TypeThatIsNotAString", R"({"a":1,"qztype":[5]})",
     "object 0-19 open\n"
     "  key 1-4 \"a\"\n"
     "  double 5-6 1\n"
     "  key 7-15 \"qztype\"\n"
     "  array 16-19\n"
     "    double 17-18 5\n"},
};
INSTANTIATE_TEST_SUITE_P(Texts, SourceNodes, ::testing::ValuesIn(kDrawnTexts),
                         [](const auto& row) { return row.param.name; });

struct FaultyText {
  const char* name;
  const char* text;
  std::size_t offset;
  const char* why;
};

std::ostream& operator<<(std::ostream& out, const FaultyText& row) {
  return out << row.name;
}

class SourceFault : public ::testing::TestWithParam<FaultyText> {};

TEST_P(SourceFault, SaysWhereAndWhy) {
  const SourceTree tree(GetParam().text);
  ASSERT_TRUE(tree.fault());
  EXPECT_EQ(tree.fault()->offset, GetParam().offset);
  EXPECT_EQ(tree.fault()->why, GetParam().why);
}

const FaultyText kFaultyTexts[] = {
    {"Empty", "", 0, "Unexpected end of text"},
    {"After", "{} x", 2, "Parse incomplete"},
    {"Colon", "{\"a\" 1}", 5, "Expected ':' after a member key"},
    {"Payload", R"({"qzdata":[1,2.5],"qztype":"int8"})", 14,
     "Expected an integer without fraction or exponent"},
    {"TypeOfAnotherKind", R"({"qztype": [5]})", 11, "Expected a string"},
    {"TypeThatIsMalformed", R"({"qztype": [5x]})", 13, "Expected a string"},
    {"TypeThatCannotBeRead", R"({"qztype": x})", 11, "Expected a string"},
};
INSTANTIATE_TEST_SUITE_P(Texts, SourceFault, ::testing::ValuesIn(kFaultyTexts),
                         [](const auto& row) { return row.param.name; });

// Builds the value of a complete tree without typed payloads, as the library does.
class Rebuilding {
 public:
  explicit Rebuilding(const SourceTree& tree) : tree_(tree) {}

  Value value(std::size_t index) const {
    const SourceNode& node = tree_[index];
    switch (node.kind) {
      case SourceKind::kNull:
        return Value(nullptr);
      case SourceKind::kBoolean:
        return Value(tree_.written(index) == "true");
      case SourceKind::kNumber:
        return Value(tree_.number(index));
      case SourceKind::kArray: {
        std::vector<Value> elements;
        for (std::size_t child = index + 1; child < node.next; child = tree_[child].next) {
          elements.push_back(value(child));
        }
        return Value(Array(std::move(elements)));
      }
      case SourceKind::kObject: {
        std::vector<std::pair<std::string, Value>> members;
        for (std::size_t key = index + 1; key < node.next; key = tree_[key + 1].next) {
          members.emplace_back(tree_.decoded(key), value(key + 1));
        }
        return Value(Object(std::move(members)));
      }
      case SourceKind::kString:
      case SourceKind::kKey:
      case SourceKind::kInteger:
        break;
    }
    return Value(tree_.decoded(index));
  }

 private:
  const SourceTree& tree_;
};

TEST(SourceTree, UnderstandsEveryTextAsTheLibraryDoes) {
  test_support::RandomJsonText texts(1);
  std::size_t compared = 0;
  std::size_t faulty = 0;
  for (int round = 0; round < 20'000; ++round) {
    const std::string text = texts.next();
    const test_support::JsonOutcome expected = test_support::outcomeOf(text);
    const SourceTree tree(text);
    if (tree.fault()) {
      ++faulty;
      // A NUL in the faulty line ends the text of the exception, but not this message.
      EXPECT_EQ(tree.fault()->message.c_str(), expected.message) << text;
      EXPECT_EQ(tree.fault()->isTypeNotString,
                expected.kind == test_support::JsonOutcome::Kind::kRuntimeError)
          << text;
    } else if (text.find("qz") == std::string::npos) {
      ++compared;
      ASSERT_EQ(expected.kind, test_support::JsonOutcome::Kind::kValue) << text;
      EXPECT_EQ(Rebuilding(tree).value(0), expected.value) << text;
    } else {
      EXPECT_EQ(expected.kind, test_support::JsonOutcome::Kind::kValue) << text;
    }
  }
  EXPECT_GT(compared, 1'000U);
  EXPECT_GT(faulty, 1'000U);
}

TEST(SourceTree, KeepsPlacesInsideAnyTextAndInOrder) {
  test_support::RandomJsonText texts(2);
  for (int round = 0; round < 20'000; ++round) {
    const std::string text = texts.next();
    const SourceTree tree(text);
    std::size_t begin = 0;
    for (std::size_t index = 0; index < tree.nodes().size(); ++index) {
      const SourceNode& node = tree[index];
      ASSERT_TRUE(index == 0 || node.begin > begin) << text;
      ASSERT_LT(node.begin, node.end) << text;
      ASSERT_LE(node.end, text.size()) << text;
      ASSERT_GT(node.next, index) << text;
      ASSERT_LE(node.next, tree.nodes().size()) << text;
      // Only the last key may lack its value.
      ASSERT_TRUE(node.kind != SourceKind::kKey || index + 1 < tree.nodes().size()) << text;
      begin = node.begin;
    }
  }
}

TEST(SourceTree, ReadsAMillionLevels) {
  const std::string text = std::string(1'000'000, '[') + std::string(1'000'000, ']');
  const SourceTree tree(text);
  EXPECT_FALSE(tree.fault());
  EXPECT_EQ(tree.nodes().size(), 1'000'000U);
  EXPECT_EQ(tree[999'999].end, 1'000'001U);
  const SourceTree cutOff(std::string_view(text).substr(0, 1'000'000));
  EXPECT_EQ(cutOff.nodes().size(), 1'000'000U);
  EXPECT_FALSE(cutOff.isWhole());
}

TEST(SourceTree, TruncatesNumbersAsTheLibraryTruncatesSizesAndUpdateLevels) {
  const SourceTree tree("[1.9,-1.9,1e19,2147483648]");
  EXPECT_EQ(tree.byteCount(1), 1);
  EXPECT_EQ(tree.byteCount(2), -1);
  EXPECT_EQ(tree.byteCount(3), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(tree.byteCount(4), 2147483648);
  EXPECT_EQ(tree.updateLevel(2), -1);
  EXPECT_EQ(tree.updateLevel(4), std::numeric_limits<int>::min());
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis::source
