// What a load leaves behind when any single allocation fails.

#include <cstddef>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "support/FailingAllocation.h"
#include "support/Failure.h"
#include "support/SampleDocument.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using test_support::failEachAllocation;
using test_support::FailingAllocation;
using test_support::failureOf;
using test_support::liveBlocks;
using test_support::sampleDocument;
using test_support::TemporaryFolder;
using test_support::toJson;
using ::testing::ElementsAre;

/// A parser that moves its text out without allocating.
class OneTextParser : public UpdateMetaDataJsonParser {
 public:
  explicit OneTextParser(std::string text)
      : UpdateMetaDataJsonParser(u"document.json"), text_(std::move(text)) {}

  std::string readFile(const std::u16string&) override { return std::move(text_); }

 private:
  std::string text_;
};

const std::string kParseFailure = "std::runtime_error: Error while parsing document.json";
const std::string kExhaustion = "std::bad_alloc: std::bad_alloc";

TEST(MemoryOfALoad, IsReportedAsAnUnusableDocumentWhenItIsTooLittleToParse) {
  const std::string text = toJson(sampleDocument());
  const std::u16string path = u"document.json";
  std::size_t failures = 0;
  for (bool reached = true; reached;) {
    OneTextParser parser(text);
    std::string failure;
    {
      const FailingAllocation failing(failures);
      failure = failureOf([&] { parser.getJsonObjFromFile(path); });
      reached = failing.reached();
    }
    ASSERT_EQ(failure, reached ? kParseFailure : "nothing") << failures;
    failures += reached ? 1 : 0;
  }
  EXPECT_GT(failures, 0U);
}

TEST(MemoryOfALoad, IsReleasedWhicheverAllocationFails) {
  const std::string text = toJson(sampleDocument());
  std::set<std::string> kinds;
  std::size_t failures = 0;
  for (bool reached = true; reached;) {
    const std::size_t before = liveBlocks();
    const std::string failure = [&] {
      OneTextParser parser(text);
      const FailingAllocation failing(failures);
      std::string result = failureOf([&] { parser.parseUpdateMetaDataJson(); });
      reached = failing.reached();
      return result;
    }();
    const bool keepsText = failure.capacity() > std::string().capacity();
    ASSERT_EQ(liveBlocks(), before + (keepsText ? 1 : 0)) << failures;
    kinds.insert(failure);
    failures += reached ? 1 : 0;
  }
  EXPECT_THAT(kinds, ElementsAre("nothing", kExhaustion, kParseFailure));
  EXPECT_GT(failures, 20U);
}

TEST(MemoryOfALoad, RunsOutWithBadAllocWhileAFileIsRead) {
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", std::string(200'000, 'x'));
  UpdateMetaDataJsonParser parser(path);
  std::size_t afterFailures = 0;
  const std::size_t failures = failEachAllocation(
      [&] {
        const std::string text = parser.readFile(path);
        EXPECT_EQ(text.size(), 200'000U) << "a text is never cut short";
      },
      [&] { ++afterFailures; });
  EXPECT_EQ(afterFailures, failures) << "every failure is reported as what it is";
  EXPECT_GT(failures, 2U);
}

}  // namespace
}  // namespace install::update_metadata_parser
