#include "command/Jobs.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <ios>
#include <new>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <vector>

namespace update_metadata_tool::command {
namespace {

/// What a process sends: for each piece its output in any number of frames, then the result. It is
/// as wide as a size, so that a header has no unused bytes.
enum class FrameKind : std::size_t { kOutput, kErrorOutput, kResult, kException, kNoMemory };

/// Comes before the bytes of a frame. Both ends are the same program, so its layout is the same.
struct FrameHeader {
  FrameKind kind;
  std::size_t size;
};
static_assert(std::has_unique_object_representations_v<FrameHeader>);

constexpr std::size_t kFrameBytes = 64U << 10U;

// A pipe of this size lets a process finish several small pieces ahead.
constexpr int kPipeBytes = 1 << 20;

constexpr int kMillisecondsBetweenUpdates = 250;

// --- the process that does pieces -----------------------------------------------------------

void sendBytes(int pipe, const char* bytes, std::size_t size) {
  while (size != 0) {
    const ssize_t sent = ::write(pipe, bytes, size);
    if (sent >= 0) {
      bytes += sent;
      size -= static_cast<std::size_t>(sent);
    } else if (errno != EINTR) {
      ::_exit(EXIT_FAILURE);  // the reader has ended
    }
  }
}

void sendFrame(int pipe, FrameKind kind, std::string_view bytes) {
  const FrameHeader header{kind, bytes.size()};
  sendBytes(pipe, reinterpret_cast<const char*>(&header), sizeof header);
  sendBytes(pipe, bytes.data(), bytes.size());
}

/// Sends what is written to a stream, as whole lines where it can: they remain of a killed process.
class FrameBuffer : public std::streambuf {
 public:
  FrameBuffer(int pipe, FrameKind kind) : pipe_(pipe), kind_(kind), bytes_(kFrameBytes, '\0') {
    clear();
  }

 protected:
  int sync() override {
    if (pptr() != pbase()) {
      sendFrame(pipe_, kind_, written());
      clear();
    }
    return 0;
  }

  int_type overflow(int_type next) override {
    const std::size_t end = written().rfind('\n');
    if (end == std::string_view::npos) {
      sync();
    } else {
      const std::string_view lines = written().substr(0, end + 1);
      const std::string_view rest = written().substr(lines.size());
      sendFrame(pipe_, kind_, lines);
      std::copy(rest.begin(), rest.end(), bytes_.begin());
      clear();
      pbump(static_cast<int>(rest.size()));
    }
    return traits_type::eq_int_type(next, traits_type::eof())
               ? traits_type::not_eof(next)
               : sputc(traits_type::to_char_type(next));
  }

 private:
  std::string_view written() const { return {pbase(), static_cast<std::size_t>(pptr() - pbase())}; }

  void clear() { setp(bytes_.data(), bytes_.data() + bytes_.size()); }

  int pipe_;
  FrameKind kind_;
  std::string bytes_;
};

// Does the pieces `first`, `first` + `step` and so on. An exception must not reach the copies of
// this process's callers.
[[noreturn]] void doPieces(const Jobs& jobs, std::size_t first, std::size_t step,
                           int pipe) noexcept {
  FrameBuffer outFrames(pipe, FrameKind::kOutput);
  FrameBuffer errFrames(pipe, FrameKind::kErrorOutput);
  std::ostream out(&outFrames);
  std::ostream err(&errFrames);
  // As with the standard streams, messages are in the right place between the output.
  err.tie(&out);
  err.setf(std::ios_base::unitbuf);
  for (std::size_t index = first; index < jobs.count; index += step) {
    try {
      const std::string result = jobs.work(index, out, err, terminal::noProgress());
      out.flush();
      sendFrame(pipe, FrameKind::kResult, result);
      continue;
    } catch (const std::bad_alloc&) {
      out.flush();
      sendFrame(pipe, FrameKind::kNoMemory, {});
    } catch (const std::exception& failure) {
      out.flush();
      sendFrame(pipe, FrameKind::kException, failure.what());
    }
    break;
  }
  ::_exit(EXIT_SUCCESS);
}

// --- the process that collects them ---------------------------------------------------------

/// A process and the pipe that it sends to.
struct Worker {
  pid_t process = -1;
  int pipe = -1;
  int error = 0;  ///< why it could not be started, if so
};

void closePipe(Worker& worker) {
  if (worker.pipe >= 0) {
    ::close(worker.pipe);
    worker.pipe = -1;
  }
}

// Waits for the end of a process; returns its status.
int collect(Worker& worker) {
  int status = 0;
  while (::waitpid(worker.process, &status, 0) < 0 && errno == EINTR) {
  }
  worker.process = -1;
  return status;
}

std::string describeEnd(Worker& worker) {
  if (worker.process < 0) {
    return "no process could be started: " + std::generic_category().message(worker.error);
  }
  const int status = collect(worker);
  return WIFSIGNALED(status)
             ? "the process was ended by signal " + std::to_string(WTERMSIG(status))
             : "the process ended with status " + std::to_string(WEXITSTATUS(status));
}

/// The processes: number w of n does the pieces w, w + n and so on.
class Workers {
 public:
  Workers(const Jobs& jobs, std::size_t count, terminal::ProgressLine& progress)
      : jobs_(jobs), workers_(count), progress_(progress) {
    for (std::size_t first = 0; first != count; ++first) {
      start(first);
    }
  }

  // Keeps the error code of a failed write, which caused this.
  ~Workers() {
    const int error = errno;
    for (Worker& worker : workers_) {
      closePipe(worker);
      if (worker.process > 0) {
        ::kill(worker.process, SIGKILL);
        collect(worker);
      }
    }
    errno = error;
  }

  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;

  // Receives one piece.
  void receive(std::size_t index, std::ostream& out, std::ostream& err) {
    Worker& worker = workers_[index % workers_.size()];
    bool hasOutput = false;
    while (receiveFrame(worker)) {
      progress_.clear();
      switch (kind_) {
        case FrameKind::kOutput:
          out << bytes_;
          hasOutput = true;
          break;
        case FrameKind::kErrorOutput:
          err << bytes_;
          break;
        case FrameKind::kResult:
          jobs_.done(index, bytes_);
          return;
        case FrameKind::kException:
          throw std::runtime_error(bytes_);
        case FrameKind::kNoMemory:
          throw std::bad_alloc();
      }
    }
    progress_.clear();
    closePipe(worker);
    jobs_.lost(index, describeEnd(worker), hasOutput);
    if (index + workers_.size() < jobs_.count) {
      start(index + workers_.size());
    }
  }

 private:
  void start(std::size_t first) {
    Worker& worker = workers_[first % workers_.size()];
    int ends[2];
    if (::pipe(ends) != 0) {
      worker.error = errno;
      return;
    }
#ifdef F_SETPIPE_SZ
    ::fcntl(ends[1], F_SETPIPE_SZ, kPipeBytes);  // a smaller pipe is slower, no more
#endif
    worker.process = ::fork();
    if (worker.process == 0) {
      // Otherwise the others would not notice the end of the reader.
      for (Worker& other : workers_) {
        closePipe(other);
      }
      ::close(ends[0]);
      doPieces(jobs_, first, workers_.size(), ends[1]);
    }
    worker.error = errno;
    worker.pipe = ends[0];
    ::close(ends[1]);
  }

  // Returns false if the process has ended.
  bool receiveFrame(const Worker& worker) {
    FrameHeader header{};
    if (!receiveBytes(worker, reinterpret_cast<char*>(&header), sizeof header)) {
      return false;
    }
    kind_ = header.kind;
    bytes_.resize(header.size);
    return receiveBytes(worker, bytes_.data(), bytes_.size());
  }

  bool receiveBytes(const Worker& worker, char* bytes, std::size_t size) {
    while (size != 0 && worker.pipe >= 0) {
      pollfd waiting{worker.pipe, POLLIN, 0};
      while (::poll(&waiting, 1, kMillisecondsBetweenUpdates) == 0) {
        progress_.update();
      }
      const ssize_t received = ::read(worker.pipe, bytes, size);
      if (received > 0) {
        bytes += received;
        size -= static_cast<std::size_t>(received);
      } else if (received == 0 || errno != EINTR) {
        break;
      }
    }
    return size == 0;
  }

  const Jobs& jobs_;
  std::vector<Worker> workers_;
  terminal::ProgressLine& progress_;
  FrameKind kind_ = FrameKind::kResult;  ///< of the last frame
  std::string bytes_;                    ///< of the last frame
};

}  // namespace

void runJobs(const Jobs& jobs, std::size_t processes, std::ostream& out, std::ostream& err,
             terminal::ProgressLine& progress) {
  std::optional<Workers> workers;
  if (std::min(processes, jobs.count) > 1) {
    workers.emplace(jobs, std::min(processes, jobs.count), progress);
  }
  for (std::size_t index = 0; index != jobs.count; ++index) {
    progress.begin(jobs.describe(index));
    if (workers) {
      workers->receive(index, out, err);
    } else {
      jobs.done(index, jobs.work(index, out, err, progress));
    }
  }
}

}  // namespace update_metadata_tool::command
