#include "lint/ProgressLine.h"

#include <chrono>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace update_metadata_tool {
namespace {

/// A progress line of three files on a terminal whose clock the test moves.
class ProgressOfThreeFiles : public ::testing::Test {
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
  ProgressLine progress_{err_, true, 3, [this] { return time_; }};
};

TEST_F(ProgressOfThreeFiles, IsNotShownWithinTheFirstSecond) {
  progress_.beginFile();
  letPass(999);
  progress_.goOn();
  progress_.beginFile();
  EXPECT_EQ(takeWritten(), "");
}

TEST_F(ProgressOfThreeFiles, IsShownWhenASecondHasPassed) {
  progress_.beginFile();
  letPass(1000);
  progress_.goOn();
  EXPECT_EQ(takeWritten(), "\r\x1B[Klinting file 1 of 3, 1 s");
}

TEST_F(ProgressOfThreeFiles, IsWrittenAnewFourTimesASecondAtMost) {
  progress_.beginFile();
  letPass(1900);
  progress_.goOn();
  EXPECT_EQ(takeWritten(), "\r\x1B[Klinting file 1 of 3, 1 s");
  letPass(249);
  progress_.beginFile();
  EXPECT_EQ(takeWritten(), "");
  letPass(1);
  progress_.goOn();
  EXPECT_EQ(takeWritten(), "\r\x1B[Klinting file 2 of 3, 2 s");
}

TEST_F(ProgressOfThreeFiles, IsRemovedOnceBeforeSomethingElseIsWritten) {
  progress_.beginFile();
  letPass(1000);
  progress_.goOn();
  takeWritten();
  progress_.clear();
  EXPECT_EQ(takeWritten(), "\r\x1B[K");
  progress_.clear();
  EXPECT_EQ(takeWritten(), "");
}

TEST_F(ProgressOfThreeFiles, RemovesNothingThatWasNeverShown) {
  progress_.beginFile();
  progress_.clear();
  EXPECT_EQ(takeWritten(), "");
}

TEST(ProgressLine, IsRemovedInTheEnd) {
  ProgressLine::Clock::time_point time;
  std::ostringstream err;
  {
    ProgressLine progress(err, true, 1, [&time] { return time; });
    progress.beginFile();
    time += std::chrono::seconds(62);
    progress.goOn();
  }
  EXPECT_EQ(err.str(), "\r\x1B[Klinting file 1 of 1, 62 s\r\x1B[K");
}

TEST(ProgressLine, WritesNothingWhereThereIsNoTerminal) {
  ProgressLine::Clock::time_point time;
  std::ostringstream err;
  {
    ProgressLine progress(err, false, 1, [&time] { return time; });
    progress.beginFile();
    time += std::chrono::seconds(10);
    progress.goOn();
  }
  EXPECT_EQ(err.str(), "");
}

}  // namespace
}  // namespace update_metadata_tool
