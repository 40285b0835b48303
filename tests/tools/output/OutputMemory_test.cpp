// Every output for programs when memory runs out while it is being written.

#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <CLI/CLI.hpp>

#include "program/Subcommands.h"
#include "support/Effort.h"
#include "support/FailingAllocation.h"

namespace update_metadata_tool::output {
namespace {

using command::Command;
using test_support::FailingAllocation;
using test_support::MemoryLimit;

/// Stores written text without allocating memory.
class FixedBuffer : public std::streambuf {
 public:
  FixedBuffer() { setp(bytes_.data(), bytes_.data() + bytes_.size()); }

  std::string_view text() const { return {pbase(), static_cast<std::size_t>(pptr() - pbase())}; }

 private:
  std::array<char, std::size_t{256} << 10U> bytes_{};
};

enum class End { kDone, kFailed, kThrown };

// Runs a subcommand during a `Shortage` that begins with the `nth` allocation. Writes its output to
// `text`. Sets `isReached` if an allocation failed.
template <class Shortage>
End runShort(const Command& command, std::size_t nth, FixedBuffer& text, bool& isReached) {
  FixedBuffer complaint;
  std::ostream out(&text);
  out.exceptions(std::ios_base::badbit);
  std::ostream err(&complaint);
  const Shortage shortage(nth);
  End end = End::kThrown;
  try {
    end = command.run(out, err) == command::ExitCode::kDone ? End::kDone : End::kFailed;
  } catch (const std::bad_alloc&) {
  }
  isReached = shortage.reached();
  return end;
}

// If the first allocation fails, then the second, and so on, or some of them, the output is
// complete, or an exception ends it early, or the command returns a failure.
template <class Shortage>
void expectNoSilentFailure(const Command& command) {
  FixedBuffer whole;
  bool isReached = true;
  constexpr std::size_t kNever = std::size_t{1} << 30U;
  ASSERT_EQ(runShort<Shortage>(command, kNever, whole, isReached), End::kDone);
  std::size_t nth = 0;
  for (isReached = true; isReached; nth += test_support::kFullEffort ? 1 : 3) {
    FixedBuffer text;
    const End end = runShort<Shortage>(command, nth, text, isReached);
    if (end == End::kDone) {
      ASSERT_EQ(text.text(), whole.text()) << nth;
    } else if (end == End::kThrown) {
      ASSERT_EQ(text.text(), whole.text().substr(0, text.text().size())) << nth;
    }
  }
  EXPECT_GT(nth, 10U);
}

struct Output {
  const char* name;
  std::vector<const char*> arguments;
};

std::ostream& operator<<(std::ostream& out, const Output& row) {
  return out << row.name;
}

class OutputsForPrograms : public ::testing::TestWithParam<Output> {
 protected:
  OutputsForPrograms() : commands_(program::addSubcommands(app_)) {
    std::vector<const char*> arguments = GetParam().arguments;
    arguments.insert(arguments.begin(), "update-metadata");
    app_.parse(static_cast<int>(arguments.size()), arguments.data());
  }

  const Command& command() const {
    for (const auto& command : commands_) {
      if (command->isChosen()) {
        return *command;
      }
    }
    throw std::logic_error("no subcommand");
  }

 private:
  CLI::App app_;
  std::vector<std::unique_ptr<Command>> commands_;
};

TEST_P(OutputsForPrograms, EndCleanlyWhenOneAllocationFails) {
  expectNoSilentFailure<FailingAllocation>(command());
}

TEST_P(OutputsForPrograms, EndCleanlyWhenMemoryRunsOut) {
  expectNoSilentFailure<MemoryLimit>(command());
}

#define SAMPLE UMP_SOURCE_DIR "/examples/documents/small/update.json"
#define FAULTY UMP_SOURCE_DIR "/tests/golden/cases/names_decoding_alike/document.json"
#define PRODUCTS UMP_SOURCE_DIR "/examples/documents/small/product-data"

const Output kOutputs[] = {
    {"Query", {"query", SAMPLE, "--format=json", "--product-data", PRODUCTS}},
    {"QueryOfOneProduct",
     {"query", SAMPLE, "--format=json", "--product-data", PRODUCTS, "--base-code=FE"}},
    {"Show", {"show", SAMPLE, "--format=json", "--product-data", PRODUCTS}},
    {"Plan", {"plan", SAMPLE, "--format=json", "--product-data", PRODUCTS, "--installed", "/"}},
    {"Why", {"why", "core_engine", SAMPLE, "--format=json", "--product-data", PRODUCTS}},
    {"List", {"list", SAMPLE, "--product-data", PRODUCTS}},
    {"ListAsObjects", {"list", SAMPLE, "--format=ndjson", "--product-data", PRODUCTS}},
    {"Diff", {"diff", SAMPLE, SAMPLE, "--format=json", "--fail-if-larger=5%"}},
    {"Lint", {"lint", FAULTY, "--format=json"}},
    {"LintForReviews", {"lint", FAULTY, "--format=sarif"}},
    {"Report", {"report", FAULTY, "-o", "-"}},
};
INSTANTIATE_TEST_SUITE_P(Commands, OutputsForPrograms, ::testing::ValuesIn(kOutputs),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::output
