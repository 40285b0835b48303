// Makes each allocation of small operations fail in turn, and counts the allocations that have
// failed here, in loads and in queries.
//
// Three programs have these sources: with operator new failing, with malloc() failing, and with
// malloc() failing beneath the shared library.

#include <cstddef>
#include <functional>
#include <iostream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "faults/AllocationFaults.h"
#include "faults/Outcome.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "mf/zero/elements/Messages.h"
#include "support/Effort.h"
#include "support/FailingAllocation.h"

namespace install::update_metadata_parser {
namespace {

using test_support::kShortages;
using test_support::liveBlocks;
using test_support::outcomeOf;
using test_support::Trial;
using test_support::tryWithoutMemory;

constexpr std::size_t kFewestPoints = test_support::kFullEffort ? 10'000 : 5'000;

// Prints how many allocations have failed when all tests have run, and checks that they are as many
// as required.
class PointCount : public ::testing::Environment {
 public:
  void TearDown() override {
    std::cout << "allocations that have failed: " << points << '\n';
    if (GTEST_FLAG_GET(filter) == "*") {
      EXPECT_GE(points, kFewestPoints);
    }
  }
};

const auto* const pointCount = ::testing::AddGlobalTestEnvironment(new PointCount);

TEST(ParserConstructor, ThrowsWhenMemoryRunsOut) {
  const std::u16string path = u"a path that does not fit into the string object itself";
  const std::size_t before = liveBlocks();
  const auto construct = [&] { const UpdateMetaDataJsonParser parser(path); };
  const std::size_t failed = tryWithoutMemory(construct, [&](const Trial& trial) {
    EXPECT_EQ(trial.outcome.text(), trial.reached ? kExhaustion : kWell);
    EXPECT_EQ(liveBlocks(), before);
  });
  EXPECT_EQ(failed, std::size(kShortages));
  points += failed;
}

TEST(FrameworkMessage, IsReportedUnlessMemoryRunsOut) {
  const std::function<void()> reports[] = {
      [] { mf::zero::reportException(mf::zero::IncompatibleModels{u"a class with a long name"}); },
      [] {
        mf::zero::reportException(
            mf::zero::CannotCastIncompatibleTypes{u"a class with a long name"});
      },
  };
  for (const auto& report : reports) {
    const std::string expected = outcomeOf(report).text();
    const std::size_t before = liveBlocks();
    points += tryWithoutMemory(report, [&](const Trial& trial) {
      ASSERT_EQ(liveBlocks(), before);
      const std::string failure = trial.outcome.text();
      ASSERT_TRUE(failure == expected || (trial.reached && failure == kExhaustion)) << failure;
    });
  }
}

}  // namespace
}  // namespace install::update_metadata_parser
