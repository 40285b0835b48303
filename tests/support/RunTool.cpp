#include "support/RunTool.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <ostream>
#include <stdexcept>
#include <system_error>

#include "support/TemporaryFolder.h"

namespace test_support {
namespace {

constexpr int kCannotRun = 127;

// Between fork() and exec(): only calls that are safe there, failures end the child.

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

void limitMemory(std::size_t bytes) {
  const rlimit limit{bytes, bytes};
  if (::setrlimit(RLIMIT_AS, &limit) != 0) {
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

}  // namespace

bool operator==(const ToolRun& left, const ToolRun& right) {
  return left.exitCode == right.exitCode && left.out == right.out && left.err == right.err;
}

std::ostream& operator<<(std::ostream& out, const ToolRun& run) {
  return out << "exit code " << run.exitCode << "\nstandard output:\n"
             << run.out << "standard error:\n"
             << run.err;
}

std::string readBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw std::runtime_error("cannot read " + path);
  }
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

ToolRun runTool(const std::vector<std::string>& arguments, const ToolSurroundings& around) {
  const TemporaryFolder folder;
  folder.writeFile("out", "");
  const std::string out = around.outFile.value_or(folder.nativePath("out"));
  const std::string err = folder.nativePath("err");
  std::vector<std::string> words = arguments;
  words.insert(words.begin(), UPDATE_METADATA_TOOL);
  std::vector<char*> argv;
  for (std::string& word : words) {
    argv.push_back(word.data());
  }
  argv.push_back(nullptr);

  const pid_t child = ::fork();
  if (child < 0) {
    throw std::system_error(errno, std::generic_category(), "fork");
  }
  if (child == 0) {
    openAs(STDIN_FILENO, "/dev/null", O_RDONLY);
    openAs(STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT);
    if (around.isOutClosedPipe) {
      openPipeWithoutReader(STDOUT_FILENO);
    } else {
      openAs(STDOUT_FILENO, out.c_str(), O_WRONLY);
    }
    if (around.memory) {
      limitMemory(*around.memory);
    }
    if (::chdir(around.folder.c_str()) == 0) {
      ::execv(argv[0], argv.data());
    }
    ::_exit(kCannotRun);
  }
  const int exitCode = waitForEnd(child);
  return {exitCode, readBytes(folder.nativePath("out")), readBytes(err)};
}

}  // namespace test_support
