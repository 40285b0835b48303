#include "ProgressLine.h"

#include <chrono>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace update_metadata_tool {
namespace {

/// A progress line on a terminal whose clock the test moves.
class Progress : public ::testing::Test {
 protected:
  void letPass(int milliseconds) { time_ += std::chrono::milliseconds(milliseconds); }

  // What has been written since the last call.
  std::string takeWritten() {
    const std::string written = err_.str();
    err_.str("");
    return written;
  }

  ProgressLine::Clock::time_point time_;
  std::ostringstream err_;
  ProgressLine progress_{err_, true, [this] { return time_; }};
};

TEST_F(Progress, IsNotShownWithinTheFirstSecond) {
  progress_.begin("reading");
  letPass(999);
  progress_.goOn();
  progress_.begin("comparing");
  EXPECT_EQ(takeWritten(), "");
}

TEST_F(Progress, IsShownWhenASecondHasPassed) {
  progress_.begin("reading");
  letPass(1000);
  progress_.goOn();
  EXPECT_EQ(takeWritten(), "\r\x1B[Kreading, 1 s");
}

TEST_F(Progress, IsWrittenAnewFourTimesASecondAtMost) {
  progress_.begin("reading");
  letPass(1900);
  progress_.goOn();
  EXPECT_EQ(takeWritten(), "\r\x1B[Kreading, 1 s");
  letPass(249);
  progress_.begin("comparing");
  EXPECT_EQ(takeWritten(), "");
  letPass(1);
  progress_.goOn();
  EXPECT_EQ(takeWritten(), "\r\x1B[Kcomparing, 2 s");
}

TEST_F(Progress, OfWorkThatWillBeSilentIsShownAtOnce) {
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

TEST_F(Progress, IsRemovedOnceBeforeSomethingElseIsWritten) {
  progress_.begin("reading");
  letPass(1000);
  progress_.goOn();
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

TEST(ProgressLine, IsRemovedInTheEnd) {
  ProgressLine::Clock::time_point time;
  std::ostringstream err;
  {
    ProgressLine progress(err, true, [&time] { return time; });
    progress.begin("reading");
    time += std::chrono::seconds(62);
    progress.goOn();
  }
  EXPECT_EQ(err.str(), "\r\x1B[Kreading, 62 s\r\x1B[K");
}

TEST(ProgressLine, WritesNothingWhereThereIsNoTerminal) {
  ProgressLine::Clock::time_point time;
  std::ostringstream err;
  {
    ProgressLine progress(err, false, [&time] { return time; });
    progress.begin("reading");
    time += std::chrono::seconds(10);
    progress.goOn();
    progress.beginSilent("parsing");
    EXPECT_FALSE(progress.isDue());
  }
  EXPECT_EQ(err.str(), "");
}

}  // namespace
}  // namespace update_metadata_tool
