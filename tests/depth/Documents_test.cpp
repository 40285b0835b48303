// Documents with a deeply nested value in an unlisted member. They are loaded with a stack that is
// far too small for one frame per level.

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "support/Depth.h"
#include "support/LoadOutcome.h"
#include "support/SampleDocument.h"

namespace install::update_metadata_parser {
namespace {

using test_support::LoadOutcome;
using test_support::loadOutcomeOf;
using test_support::Path;
using test_support::repeated;
using test_support::sampleCalls;
using test_support::sampleDocument;
using test_support::toJson;
using test_support::with;

struct Nesting {
  const char* name;
  std::string_view opening;
  std::string_view closing;
  std::size_t levels;  ///< opened by one step

  std::size_t steps() const { return test_support::levels() / levels; }
  std::string start() const { return repeated(opening, steps()); }
  std::string text() const { return start() + "1" + repeated(closing, steps()); }
};

void PrintTo(const Nesting& nesting, std::ostream* stream) {
  *stream << nesting.name;
}

constexpr Nesting kNestings[] = {
    {"Arrays", "[", "]", 1},
    {"Objects", "{\"k\":", "}", 1},
    {"Mixed", "[{\"k\":", "}]", 2},
};

struct Place {
  const char* name;
  Path path;
};

void PrintTo(const Place& place, std::ostream* stream) {
  *stream << place.name;
}

// The sample document split at that path: the text before the value and the text after it.
std::tuple<std::string, std::string> around(const Path& path) {
  const std::string mark = "here";
  const std::string document = toJson(with(sampleDocument(), path, mark.c_str()));
  const std::size_t place = document.find('"' + mark + '"');
  return {document.substr(0, place), document.substr(place + mark.size() + 2)};
}

LoadOutcome loadWithSmallStack(const std::string& document) {
  LoadOutcome outcome;
  test_support::runWithSmallStack([&] { outcome = loadOutcomeOf(document); });
  return outcome;
}

using Row = std::tuple<Nesting, Place>;

std::string nameOf(const ::testing::TestParamInfo<Row>& row) {
  return std::get<Place>(row.param).name + std::string("Of") + std::get<Nesting>(row.param).name;
}

class DeepUnlistedMember : public ::testing::TestWithParam<Row> {
 protected:
  const Nesting& nesting() const { return std::get<Nesting>(GetParam()); }
  const Path& path() const { return std::get<Place>(GetParam()).path; }
};

const std::vector<Place> kUnlistedMembers = {
    {"InTheDocument", {"unlisted"}},
    {"InTheMetaData", {"metadata", "unlisted"}},
    {"InARelease", {"metadata", "target", "unlisted"}},
    {"InAComponent", {"components", "extra", "unlisted"}},
    {"InAPackageToDelete", {"components", "extra", "delete", "shed", "unlisted"}},
    {"InAPackageToExtract", {"components", "extra", "extract", "in", "unlisted"}},
    {"InAProduct", {"products", "Scale", "unlisted"}},
    {"InAPackageWithFilesToDelete", {"componentsWithFilesDeleted", "help", "pages", "unlisted"}},
};

INSTANTIATE_TEST_SUITE_P(Places, DeepUnlistedMember,
                         ::testing::Combine(::testing::ValuesIn(kNestings),
                                            ::testing::ValuesIn(kUnlistedMembers)),
                         nameOf);

TEST_P(DeepUnlistedMember, IsIgnored) {
  const auto [before, after] = around(path());
  const LoadOutcome outcome = loadWithSmallStack(before + nesting().text() + after);
  EXPECT_EQ(outcome, (LoadOutcome{sampleCalls(), "nothing"}));
}

class DeepDocument : public ::testing::TestWithParam<Nesting> {};

INSTANTIATE_TEST_SUITE_P(Nestings, DeepDocument, ::testing::ValuesIn(kNestings),
                         [](const auto& row) { return row.param.name; });

TEST_P(DeepDocument, CannotBeParsedIfItIsCutOffOrItsLastByteIsWrong) {
  const std::vector<std::string> begun = sampleCalls(3);
  const LoadOutcome failure = {begun, "std::runtime_error: Error while parsing document.json"};
  const std::string before = std::get<0>(around({"unlisted"}));
  EXPECT_EQ(loadWithSmallStack(before + GetParam().start()), failure);
  std::string text = before + GetParam().text();
  text.back() = ':';
  EXPECT_EQ(loadWithSmallStack(text), failure);
}

}  // namespace
}  // namespace install::update_metadata_parser
