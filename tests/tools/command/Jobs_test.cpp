#include "command/Jobs.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <new>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace update_metadata_tool::command {
namespace {

using ::testing::StrEq;
using ::testing::ThrowsMessage;

constexpr std::size_t kCount = 7;

/// Runs pieces and keeps what comes of them.
class JobsOf : public ::testing::TestWithParam<std::size_t> {
 protected:
  JobsOf() {
    jobs_.count = kCount;
    jobs_.describe = [](std::size_t index) { return "piece " + std::to_string(index); };
    jobs_.done = [this](std::size_t index, const std::string& result) {
      results_ << index << " done: " << result << '\n';
    };
    jobs_.lost = [this](std::size_t index, const std::string& reason, bool hasOutput) {
      results_ << index << " lost: " << reason << (hasOutput ? ", with output\n" : "\n");
    };
  }

  ~JobsOf() override {
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD) << "a process is left";
  }

  void run(std::size_t processes) { runJobs(jobs_, processes, out_, err_, terminal::noProgress()); }

  template <class Work>
  void setWork(const Work& work) {
    jobs_.work = [work](std::size_t index, std::ostream& out, std::ostream& err,
                        terminal::ProgressLine& /*progress*/) { return work(index, out, err); };
  }

  // The last piece writes little, the first one more than a pipe holds.
  void setPlainWork() {
    setWork([](std::size_t index, std::ostream& out, std::ostream& err) {
      out << std::string((kCount - 1 - index) * 500'000, static_cast<char>('a' + index)) << '\n';
      err << "message " << index << '\n';
      return std::string(index, '\0');
    });
  }

  Jobs jobs_;
  std::ostringstream results_;
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_P(JobsOf, WriteWhatTheyWriteInOneProcess) {
  setPlainWork();
  run(1);
  const std::string results = results_.str();
  const std::string out = out_.str();
  const std::string err = err_.str();
  results_.str("");
  out_.str("");
  err_.str("");
  run(GetParam());
  EXPECT_EQ(results_.str(), results);
  EXPECT_TRUE(out_.str() == out);
  EXPECT_EQ(err_.str(), err);
}

TEST_P(JobsOf, AreNoneWithoutAPiece) {
  jobs_.count = 0;
  run(GetParam());
  EXPECT_EQ(results_.str(), "");
}

// Both streams lead to one, as on a terminal.
TEST_P(JobsOf, KeepMessagesBetweenTheOutput) {
  setWork([](std::size_t index, std::ostream& out, std::ostream& err) {
    out << index << " before\n";
    err << index << " message\n";
    out << index << " after\n";
    return "";
  });
  jobs_.count = 2;
  runJobs(jobs_, GetParam(), out_, out_, terminal::noProgress());
  EXPECT_EQ(out_.str(), "0 before\n0 message\n0 after\n1 before\n1 message\n1 after\n");
}

TEST_P(JobsOf, EndWithTheFirstException) {
  setWork([](std::size_t index, std::ostream& out, std::ostream& /*err*/) -> std::string {
    out << index;
    if (index == 3) {
      throw std::runtime_error("three");
    }
    if (index == 5) {
      throw std::bad_alloc();
    }
    return "";
  });
  EXPECT_THAT([this] { run(GetParam()); }, ThrowsMessage<std::runtime_error>(StrEq("three")));
  EXPECT_EQ(out_.str(), "0123");
}

TEST_P(JobsOf, EndWithALackOfMemory) {
  setWork([](std::size_t /*index*/, std::ostream& /*out*/, std::ostream& /*err*/) -> std::string {
    throw std::bad_alloc();
  });
  EXPECT_THROW(run(GetParam()), std::bad_alloc);
}

// Some lines are longer than a frame.
TEST_P(JobsOf, SendLinesOfAnyLength) {
  setWork([](std::size_t index, std::ostream& out, std::ostream& /*err*/) {
    for (std::size_t length = 1; length < 300'000; length = length * 3 + index) {
      out << '\n' << std::string(length, 'x') << std::string(length, 'y');
    }
    return "";
  });
  run(1);
  const std::string out = out_.str();
  out_.str("");
  run(GetParam());
  EXPECT_TRUE(out_.str() == out);
}

/// Accepts a number of bytes, then none.
class FullDisk : public std::streambuf {
 public:
  explicit FullDisk(std::streamsize room) : room_(room) {}

 protected:
  std::streamsize xsputn(const char* /*text*/, std::streamsize size) override {
    const std::streamsize written = std::min(size, room_);
    room_ -= written;
    errno = written == size ? errno : ENOSPC;
    return written;
  }

  int_type overflow(int_type /*next*/) override { return traits_type::eof(); }

 private:
  std::streamsize room_;
};

TEST_P(JobsOf, EndWithTheOutputAndKeepItsErrorCode) {
  setPlainWork();
  FullDisk disk(1'000'000);
  std::ostream out(&disk);
  out.exceptions(std::ios_base::badbit);
  EXPECT_THROW(runJobs(jobs_, GetParam(), out, err_, terminal::noProgress()),
               std::ios_base::failure);
  EXPECT_EQ(errno, ENOSPC);
}

INSTANTIATE_TEST_SUITE_P(Processes, JobsOf, ::testing::Values(1, 2, 3, 7, 100),
                         ::testing::PrintToStringParamName());

// --- a process that ends ----------------------------------------------------------------------

class LostJobs : public JobsOf {};

TEST_F(LostJobs, AreThePiecesInWhichAProcessEnds) {
  setWork([](std::size_t index, std::ostream& out, std::ostream& /*err*/) {
    if (index == 2) {
      ::raise(SIGKILL);
    }
    out << index;
    if (index == 3) {
      ::_exit(5);
    }
    if (index == 4) {
      out << std::flush;
      ::_exit(6);
    }
    return "";
  });
  run(2);
  EXPECT_EQ(results_.str(),
            "0 done: \n1 done: \n"
            "2 lost: the process was ended by signal 9\n"
            "3 lost: the process ended with status 5\n"
            "4 lost: the process ended with status 6, with output\n"
            "5 done: \n6 done: \n");
  EXPECT_EQ(out_.str(), "01456");
}

TEST_F(LostJobs, LeaveWholeLines) {
  std::string lines;
  for (int number = 0; number != 50'000; ++number) {
    lines += std::to_string(number) + '\n';
  }
  setWork([lines](std::size_t /*index*/, std::ostream& out, std::ostream& /*err*/) {
    out << lines << "part of a line";
    ::raise(SIGKILL);
    return "";
  });
  jobs_.count = 2;
  run(2);
  EXPECT_EQ(results_.str(),
            "0 lost: the process was ended by signal 9, with output\n"
            "1 lost: the process was ended by signal 9, with output\n");
  const std::string half = out_.str().substr(0, out_.str().size() / 2);
  EXPECT_EQ(out_.str(), half + half);
  EXPECT_THAT(lines, ::testing::StartsWith(half));
  EXPECT_THAT(half, ::testing::EndsWith("\n"));
}

TEST_F(LostJobs, AreAllIfEachEndsItsProcess) {
  setWork([](std::size_t /*index*/, std::ostream& /*out*/, std::ostream& /*err*/) {
    ::raise(SIGKILL);
    return "";
  });
  jobs_.count = 3;
  run(3);
  EXPECT_EQ(results_.str(),
            "0 lost: the process was ended by signal 9\n"
            "1 lost: the process was ended by signal 9\n"
            "2 lost: the process was ended by signal 9\n");
}

TEST_F(LostJobs, AreNotThoseOfAWaitingProcess) {
  setPlainWork();
  const auto work = jobs_.work;
  jobs_.work = [work](std::size_t index, std::ostream& out, std::ostream& err,
                      terminal::ProgressLine& progress) {
    if (index == 0) {
      ::raise(SIGTERM);
    }
    return work(index, out, err, progress);
  };
  run(kCount);
  EXPECT_THAT(results_.str(), ::testing::StartsWith("0 lost: the process was ended by signal 15\n"
                                                    "1 done: "));
  EXPECT_EQ(err_.str(), "message 1\nmessage 2\nmessage 3\nmessage 4\nmessage 5\nmessage 6\n");
}

}  // namespace
}  // namespace update_metadata_tool::command
