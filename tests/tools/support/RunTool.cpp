#include "support/RunTool.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "support/TemporaryFolder.h"

namespace test_support {
namespace {

constexpr int kCannotRun = 127;

// Between fork() and exec(): only calls that are safe there; failures end the child.

void openAs(int descriptor, const char* path, int flags) {
  const int opened = ::open(path, flags | O_CLOEXEC, 0600);
  if (opened < 0 || ::dup2(opened, descriptor) < 0) {
    ::_exit(kCannotRun);
  }
}

void openPipeWithoutReader(int descriptor) {
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0 || ::dup2(ends[1], descriptor) < 0) {
    ::_exit(kCannotRun);
  }
  ::close(ends[0]);
  ::close(ends[1]);
}

void writeTo(int descriptor) {
  if (::dup2(descriptor, STDOUT_FILENO) < 0 || ::dup2(descriptor, STDERR_FILENO) < 0) {
    ::_exit(kCannotRun);
  }
}

void setLimit(__rlimit_resource resource, const std::optional<std::size_t>& bytes) {
  if (!bytes) {
    return;
  }
  const rlimit limit{*bytes, *bytes};
  if (::setrlimit(resource, &limit) != 0) {
    ::_exit(kCannotRun);
  }
}

// Becomes the user `nobody`.
void giveUpRights() {
  constexpr unsigned kNobody = 65534;
  if (::geteuid() == 0 &&
      (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) {
    ::_exit(kCannotRun);
  }
}

int waitForEnd(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) {
      throw std::system_error(errno, std::generic_category(), "waitpid");
    }
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// A terminal that stores the bytes that are written to it.
class Terminal {
 public:
  explicit Terminal(unsigned short columns)
      : reader_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (reader_ >= 0 && ::grantpt(reader_) == 0 && ::unlockpt(reader_) == 0) {
      writer_ = ::open(::ptsname(reader_), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }
    termios settings{};
    if (writer_ < 0 || ::tcgetattr(writer_, &settings) != 0) {
      throw std::system_error(errno, std::generic_category(), "a terminal");
    }
    ::cfmakeraw(&settings);
    ::tcsetattr(writer_, TCSANOW, &settings);
    const winsize size{0, columns, 0, 0};
    ::ioctl(writer_, TIOCSWINSZ, &size);
  }

  ~Terminal() {
    closeWriter();
    ::close(reader_);
  }

  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  /// The descriptor to which the children write.
  int writer() const { return writer_; }

  /// Closes the writing end, which only the children use.
  void closeWriter() {
    if (writer_ >= 0) {
      ::close(writer_);
      writer_ = -1;
    }
  }

  /// Reads until the last writer is gone, which read() reports as an error.
  std::string readToEnd() const {
    std::string text;
    char bytes[4096];
    for (;;) {
      const ssize_t got = ::read(reader_, bytes, sizeof bytes);
      if (got > 0) {
        text.append(bytes, static_cast<std::size_t>(got));
      } else if (got == 0 || errno != EINTR) {
        return text;
      }
    }
  }

 private:
  int reader_;
  int writer_ = -1;
};

}  // namespace

ToolRun runTool(const std::vector<std::string>& arguments, const ToolSurroundings& around) {
  const TemporaryFolder folder;
  folder.writeFile("out", "");
  const std::string out = around.outFile.value_or(folder.nativePath("out"));
  const std::string err = folder.nativePath("err");
  // Opened here, because the user who runs the command may not be allowed to enter its folder.
  const int program = ::open(UPDATE_METADATA_TOOL, O_PATH | O_CLOEXEC);
  std::vector<std::string> words = arguments;
  words.insert(words.begin(), UPDATE_METADATA_TOOL);
  std::vector<char*> argv;
  for (std::string& word : words) {
    argv.push_back(word.data());
  }
  argv.push_back(nullptr);
  std::optional<Terminal> terminal;
  if (around.isOnTerminal) {
    terminal.emplace(around.terminalColumns);
  }

  const pid_t child = ::fork();
  if (child < 0) {
    throw std::system_error(errno, std::generic_category(), "fork");
  }
  if (child == 0) {
    openAs(STDIN_FILENO, around.inFile.c_str(), O_RDONLY);
    openAs(STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT);
    if (terminal) {
      writeTo(terminal->writer());
    } else if (around.isOutClosedPipe) {
      openPipeWithoutReader(STDOUT_FILENO);
    } else {
      openAs(STDOUT_FILENO, out.c_str(), O_WRONLY);
    }
    setLimit(RLIMIT_AS, around.memory);
    setLimit(RLIMIT_FSIZE, around.fileSize);
    for (const std::string& variable : around.environment) {
      ::putenv(const_cast<char*>(variable.c_str()));
    }
    if (around.isInClosed) {
      ::close(STDIN_FILENO);
    }
    if (::chdir(around.folder.c_str()) == 0) {
      if (!around.isAdministrator) {
        giveUpRights();
      }
      ::fexecve(program, argv.data(), environ);
    }
    ::_exit(kCannotRun);
  }
  ::close(program);
  std::string onTerminal;
  if (terminal) {
    terminal->closeWriter();
    onTerminal = terminal->readToEnd();
  }
  const int exitCode = waitForEnd(child);
  return {exitCode, terminal ? onTerminal : readBytes(folder.nativePath("out")), readBytes(err)};
}

}  // namespace test_support
