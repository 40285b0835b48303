#include "driver/Process.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
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

pid_t start(const std::vector<std::string>& command, const Pipe& output) {
  std::vector<char*> words;
  for (const std::string& word : command) {
    words.push_back(const_cast<char*>(word.c_str()));  // never written to
  }
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output.writeEnd(), STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, output.writeEnd());
  posix_spawn_file_actions_addclose(&actions, output.readEnd());
  pid_t child = 0;
  const int error = posix_spawn(&child, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
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

}  // namespace

std::string outputOf(const std::vector<std::string>& command) {
  Pipe pipe;
  const pid_t child = start(command, pipe);
  pipe.closeWriteEnd();
  std::string output = readToEnd(pipe.readEnd());
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != EXIT_SUCCESS) {
    std::string words;
    for (const std::string& word : command) {
      words.append(" ").append(word);
    }
    throw std::runtime_error("command failed:" + words);
  }
  return output;
}

}  // namespace bench::driver
