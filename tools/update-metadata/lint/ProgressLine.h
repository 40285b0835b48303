#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <iosfwd>

namespace update_metadata_tool {

/// Tells somebody who waits that work goes on, in one line of a terminal that is written anew.
///
/// The line appears when a second has passed and changes four times a second at most. Work that is
/// done sooner never shows it.
class ProgressLine {
 public:
  using Clock = std::chrono::steady_clock;

  /// \param isShown  whether there is a terminal; nothing is ever written otherwise
  /// \param now      tells the time; the work begins at the time of the construction
  ProgressLine(std::ostream& err, bool isShown, std::size_t files,
               std::function<Clock::time_point()> now = Clock::now);

  /// Removes the line.
  ~ProgressLine();

  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// Says that the next file is begun.
  void beginFile();

  /// Says that work goes on. Cheap, so that it can be said often.
  void goOn();

  /// Removes the line, so that something else can be written. goOn() shows it again.
  void clear();

 private:
  std::ostream& err_;
  bool isShown_;
  std::size_t files_;
  std::function<Clock::time_point()> now_;
  Clock::time_point begin_;
  Clock::time_point next_;  ///< not written before
  std::size_t file_ = 0;    ///< number of the file that is worked on, from 1
  bool isWritten_ = false;
};

}  // namespace update_metadata_tool
