#include "support/OwnProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <exception>
#include <stdexcept>

namespace test_support {

void require(bool success) {
  if (!success) {
    throw std::runtime_error("the conditions of the test cannot be made");
  }
}

std::string inProcessOf(uid_t user, const std::function<std::string()>& action) {
  int ends[2];
  require(::pipe(ends) == 0);
  const pid_t child = ::fork();
  require(child >= 0);
  if (child == 0) {
    ::close(ends[0]);
    std::string text;
    try {
      if (user != 0) {
        require(::setgid(user) == 0 && ::setuid(user) == 0);
      }
      text = action();
    } catch (const std::exception& failure) {
      text = std::string("unexpected: ") + failure.what();
    }
    const ssize_t written = ::write(ends[1], text.data(), text.size());
    ::_exit(written == static_cast<ssize_t>(text.size()) ? 0 : 1);
  }
  ::close(ends[1]);
  std::string text;
  char bytes[512];
  for (ssize_t got = ::read(ends[0], bytes, sizeof bytes); got > 0;
       got = ::read(ends[0], bytes, sizeof bytes)) {
    text.append(bytes, static_cast<std::size_t>(got));
  }
  ::close(ends[0]);
  int status = 0;
  require(::waitpid(child, &status, 0) == child);
  return status == 0 ? text : "the process ended with status " + std::to_string(status);
}

}  // namespace test_support
