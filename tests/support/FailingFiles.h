#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace test_support {

/// A call by which files are read.
enum class FileCall { kStat, kOpen, kSeek, kRead, kClose };

/// Watches the calls by which the files of this process are read, while it lives, and makes some of
/// them fail.
///
/// An executable that links ump_failing_files has these calls replaced, also for the shared
/// libraries that it uses. One thread, and one object at a time.
class WatchedFiles {
 public:
  /// All calls succeed.
  WatchedFiles() noexcept;

  /// The `count` calls from the `nth` on, from 0, fail with `error`. A close that fails has closed.
  WatchedFiles(std::size_t nth, std::size_t count, int error) noexcept;

  WatchedFiles(const WatchedFiles&) = delete;
  WatchedFiles& operator=(const WatchedFiles&) = delete;
  ~WatchedFiles();

  /// Has each read give at most this many bytes.
  void limitReads(std::size_t bytes) noexcept;

  /// Has each read fail with EINTR once before it succeeds.
  void interruptReads() noexcept;

  /// Has `action` run before the `nth` call of a kind, from 0.
  void runBefore(FileCall call, std::size_t nth, std::function<void()> action);

  /// The calls so far.
  const std::vector<FileCall>& calls() const noexcept;

  /// How many files are open that were opened while this object lives.
  int openFiles() const noexcept;
};

}  // namespace test_support
