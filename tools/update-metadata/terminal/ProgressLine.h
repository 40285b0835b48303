#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

namespace update_metadata_tool::terminal {

/// Shows a waiting user what the program is doing, in one line of a terminal that it rewrites.
///
/// The line appears after one second, or before work that cannot update it, and changes at most
/// four times a second. It fits the terminal: the description is shortened before the time is.
class ProgressLine {
 public:
  using Clock = std::chrono::steady_clock;

  /// \param columns  of the terminal, at least one; without them nothing is ever written
  /// \param now      the clock; the time counts from construction
  ProgressLine(std::ostream& err, std::optional<std::size_t> columns,
               std::function<Clock::time_point()> now = Clock::now);

  /// Removes the line.
  ~ProgressLine();

  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// Begins a piece of work, described in a few words of ASCII: "reading the document".
  void begin(std::string work);

  /// The same for work that may take long and cannot call update(): it is shown at once.
  void beginSilent(std::string work);

  /// Shows the elapsed time if an update is due. Cheap, so call it often.
  void update();

  /// Returns whether enough time has passed for the line to be shown.
  bool isDue() const;

  /// Removes the line, so that something else can be written. The next update shows it again.
  void clear();

 private:
  void show(Clock::time_point now);

  std::ostream& err_;
  std::optional<std::size_t> columns_;
  std::function<Clock::time_point()> now_;
  Clock::time_point begin_;
  Clock::time_point next_;  ///< time of the next update
  std::string work_;
  bool isWritten_ = false;
};

/// A line that is never shown.
ProgressLine& noProgress();

/// Shows that results are being written to standard output, or removes the line if they go to a
/// terminal, where they can be seen.
void beginOutput(ProgressLine& progress);

}  // namespace update_metadata_tool::terminal
