#include "terminal/ProgressLine.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace update_metadata_tool::terminal {
namespace {

/// A progress line with a clock that the test advances.
class Progress : public ::testing::Test {
 protected:
  void letPass(int milliseconds) { time_ += std::chrono::milliseconds(milliseconds); }

  // The text written since the last call.
  std::string takeWritten() {
    const std::string written = err_.str();
    err_.str("");
    return written;
  }

  ProgressLine::Clock::time_point time_;
  std::ostringstream err_;
  ProgressLine progress_{err_, 80, [this] { return time_; }};
};

TEST_F(Progress, IsNotShownWithinTheFirstSecond) {
  progress_.begin("reading");
  letPass(999);
  progress_.update();
  progress_.begin("comparing");
  EXPECT_EQ(takeWritten(), "");
}

TEST_F(Progress, IsShownWhenASecondHasPassed) {
  progress_.begin("reading");
  letPass(1000);
  progress_.update();
  EXPECT_EQ(takeWritten(), "\r\x1B[Kreading, 1 s");
}

TEST_F(Progress, ChangesAtMostFourTimesASecond) {
  progress_.begin("reading");
  letPass(1900);
  progress_.update();
  EXPECT_EQ(takeWritten(), "\r\x1B[Kreading, 1 s");
  letPass(249);
  progress_.begin("comparing");
  EXPECT_EQ(takeWritten(), "");
  letPass(1);
  progress_.update();
  EXPECT_EQ(takeWritten(), "\r\x1B[Kcomparing, 2 s");
}

TEST_F(Progress, OfSilentWorkIsShownAtOnce) {
  progress_.beginSilent("parsing");
  EXPECT_EQ(takeWritten(), "\r\x1B[Kparsing");
  letPass(249);
  progress_.begin("comparing");
  EXPECT_EQ(takeWritten(), "");
  letPass(1000);
  progress_.beginSilent("parsing");
  EXPECT_EQ(takeWritten(), "\r\x1B[Kparsing, 1 s");
}

TEST_F(Progress, IsDueWhenASecondHasPassed) {
  letPass(999);
  EXPECT_FALSE(progress_.isDue());
  letPass(1);
  EXPECT_TRUE(progress_.isDue());
}

TEST_F(Progress, IsRemovedOnlyOnce) {
  progress_.begin("reading");
  letPass(1000);
  progress_.update();
  takeWritten();
  progress_.clear();
  EXPECT_EQ(takeWritten(), "\r\x1B[K");
  progress_.clear();
  EXPECT_EQ(takeWritten(), "");
}

TEST_F(Progress, RemovesNothingThatWasNeverShown) {
  progress_.begin("reading");
  progress_.clear();
  EXPECT_EQ(takeWritten(), "");
}

TEST(ProgressLine, IsRemovedAtTheEnd) {
  ProgressLine::Clock::time_point time;
  std::ostringstream err;
  {
    ProgressLine progress(err, 80, [&time] { return time; });
    progress.begin("reading");
    time += std::chrono::seconds(62);
    progress.update();
  }
  EXPECT_EQ(err.str(), "\r\x1B[Kreading, 62 s\r\x1B[K");
}

struct NarrowTerminal {
  std::size_t columns;
  const char* written;
};

std::ostream& operator<<(std::ostream& out, const NarrowTerminal& row) {
  return out << row.columns << " columns";
}

class NarrowTerminals : public ::testing::TestWithParam<NarrowTerminal> {};

TEST_P(NarrowTerminals, ShowTheLineInOneRow) {
  ProgressLine::Clock::time_point time;
  std::ostringstream err;
  ProgressLine progress(err, GetParam().columns, [&time] { return time; });
  time += std::chrono::seconds(62);
  progress.begin("reading");
  EXPECT_EQ(err.str(), std::string("\r\x1B[K") + GetParam().written);
}

const NarrowTerminal kNarrowTerminals[] = {
    {15, "reading, 62 s"},
    {14, "reading, 62 s"},
    {13, "readin, 62 s"},
    {8, "r, 62 s"},
    {7, ", 62 s"},
    {4, ", 6"},
    {1, ""},
};
INSTANTIATE_TEST_SUITE_P(Terminals, NarrowTerminals, ::testing::ValuesIn(kNarrowTerminals));

TEST(ProgressLine, WritesNothingWithoutATerminal) {
  ProgressLine::Clock::time_point time;
  std::ostringstream err;
  {
    ProgressLine progress(err, std::nullopt, [&time] { return time; });
    progress.begin("reading");
    time += std::chrono::seconds(10);
    progress.update();
    progress.beginSilent("parsing");
    EXPECT_FALSE(progress.isDue());
  }
  EXPECT_EQ(err.str(), "");
}

}  // namespace
}  // namespace update_metadata_tool::terminal
