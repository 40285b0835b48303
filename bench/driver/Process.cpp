#include "driver/Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <system_error>

namespace bench::driver {
namespace {

// The two ends of a pipe, closed when they go out of scope.
class Pipe {
 public:
  Pipe() {
    if (pipe(ends_.data()) != 0) {
      throw std::system_error(errno, std::generic_category(), "pipe");
    }
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() {
    close(readEnd());
    closeWriteEnd();
  }

  int readEnd() const noexcept { return ends_[0]; }
  int writeEnd() const noexcept { return ends_[1]; }
  void closeWriteEnd() noexcept {
    if (writeEnd() >= 0) {
      close(writeEnd());
      ends_[1] = -1;
    }
  }

 private:
  std::array<int, 2> ends_ = {-1, -1};
};

// What a program's file descriptors become when it starts.
class FileActions {
 public:
  FileActions() { posix_spawn_file_actions_init(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }

  void writeTo(const Pipe& output) {
    posix_spawn_file_actions_adddup2(&actions_, output.writeEnd(), STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions_, output.writeEnd());
    posix_spawn_file_actions_addclose(&actions_, output.readEnd());
  }
  void drop(int descriptor) {
    posix_spawn_file_actions_addopen(&actions_, descriptor, "/dev/null", O_WRONLY, 0);
  }

  const posix_spawn_file_actions_t* get() const noexcept { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_;
};

pid_t start(const std::vector<std::string>& command, const FileActions& actions) {
  std::vector<char*> words;
  for (const std::string& word : command) {
    words.push_back(const_cast<char*>(word.c_str()));  // never written to
  }
  words.push_back(nullptr);
  pid_t child = 0;
  const int error = posix_spawn(&child, words[0], actions.get(), nullptr, words.data(), environ);
  if (error != 0) {
    throw std::system_error(error, std::generic_category(), command.front());
  }
  return child;
}

std::string readToEnd(int descriptor) {
  std::string text;
  std::array<char, 4096> piece;
  for (;;) {
    const ssize_t got = read(descriptor, piece.data(), piece.size());
    if (got > 0) {
      text.append(piece.data(), static_cast<std::size_t>(got));
    } else if (got == 0 || errno != EINTR) {
      return text;
    }
  }
}

// How a program ended.
struct End {
  int status;
  rusage usage;
};

End waitFor(pid_t child) {
  End end{};
  while (wait4(child, &end.status, 0, &end.usage) < 0 && errno == EINTR) {
  }
  return end;
}

// Requires an exit status of at most `highest`.
void requireStatus(int highest, int status, const std::vector<std::string>& command) {
  if (WIFEXITED(status) && WEXITSTATUS(status) <= highest) {
    return;
  }
  std::string words;
  for (const std::string& word : command) {
    words.append(" ").append(word);
  }
  throw std::runtime_error("command failed:" + words);
}

double secondsOf(const timeval& time) {
  constexpr double kMicrosecondsPerSecond = 1e6;
  return static_cast<double>(time.tv_sec) +
         static_cast<double>(time.tv_usec) / kMicrosecondsPerSecond;
}

}  // namespace

std::string outputOf(const std::vector<std::string>& command) {
  Pipe pipe;
  FileActions actions;
  actions.writeTo(pipe);
  const pid_t child = start(command, actions);
  pipe.closeWriteEnd();
  std::string output = readToEnd(pipe.readEnd());
  requireStatus(0, waitFor(child).status, command);
  return output;
}

Usage usageOf(const std::vector<std::string>& command) {
  FileActions actions;
  actions.drop(STDOUT_FILENO);
  actions.drop(STDERR_FILENO);
  const auto begin = std::chrono::steady_clock::now();
  const End end = waitFor(start(command, actions));
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
  requireStatus(1, end.status, command);
  return {elapsed.count(), secondsOf(end.usage.ru_utime) + secondsOf(end.usage.ru_stime)};
}

}  // namespace bench::driver
