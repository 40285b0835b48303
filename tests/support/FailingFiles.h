#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace test_support {

/// A call that reading a file makes.
enum class FileCall { kStat, kOpen, kSeek, kRead, kClose };

/// While it lives, watches the calls by which this process reads files, and makes some of them
/// fail.
///
/// In an executable that links ump_failing_files these calls are replaced in all code that is
/// linked statically. One thread, and one object at a time.
class WatchedFiles {
 public:
  /// All calls succeed.
  WatchedFiles() noexcept;

  /// Makes `count` calls fail with `error`, starting with number `nth` from 0. A close that fails
  /// has closed the file.
  WatchedFiles(std::size_t nth, std::size_t count, int error) noexcept;

  WatchedFiles(const WatchedFiles&) = delete;
  WatchedFiles& operator=(const WatchedFiles&) = delete;
  ~WatchedFiles();

  /// Limits each read to this many bytes.
  void limitReads(std::size_t bytes) noexcept;

  /// Makes each read fail with EINTR once before it succeeds.
  void interruptReads() noexcept;

  /// Runs `action` before call number `nth`, from 0, of a kind.
  void runBefore(FileCall call, std::size_t nth, std::function<void()> action);

  /// The calls so far.
  const std::vector<FileCall>& calls() const noexcept;

  /// How many files opened during the life of this object are still open.
  int openFiles() const noexcept;
};

}  // namespace test_support
