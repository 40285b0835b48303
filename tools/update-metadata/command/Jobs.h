#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>

#include "terminal/ProgressLine.h"

namespace update_metadata_tool::command {

/// The most processes that --jobs allows.
constexpr std::size_t kMostProcesses = 256;

/// Work in independent pieces, such as one for each document, numbered from 0.
struct Jobs {
  std::size_t count = 0;

  /// Describes a piece in a few words of ASCII for the progress line.
  std::function<std::string(std::size_t index)> describe;

  /// Does a piece, writing any amount to `out` and `err`. Returns a small result, which may contain
  /// any bytes. It may run in a copy of this process: nothing else that it changes in memory is
  /// seen by the other functions.
  std::function<std::string(std::size_t index, std::ostream& out, std::ostream& err,
                            terminal::ProgressLine& progress)>
      work;

  /// Receives the result of a piece once its output is written.
  std::function<void(std::size_t index, const std::string& result)> done;

  /// Called instead of done() if a process ended during the piece: "the process was ended by signal
  /// 9". If `hasOutput`, a part of the piece's output is written: whole lines, unless one is longer
  /// than 64 KB or the piece flushed its output within it.
  std::function<void(std::size_t index, const std::string& reason, bool hasOutput)> lost;
};

/// Does every piece, up to `processes` of them at a time, in separate processes.
///
/// `out` and `err` receive the same bytes as with one process, in the order of the pieces. With one
/// process, the pieces are done in this one; on Windows they always are. Only this process shows
/// progress and calls done() and lost().
///
/// The first exception, of a piece, a function or a stream, ends all processes and passes through;
/// that of a piece becomes a std::runtime_error or std::bad_alloc if it comes from another process.
/// No process is left behind. A process that is far ahead waits, so memory depends neither on the
/// number of pieces nor on what they write.
void runJobs(const Jobs& jobs, std::size_t processes, std::ostream& out, std::ostream& err,
             terminal::ProgressLine& progress);

}  // namespace update_metadata_tool::command
