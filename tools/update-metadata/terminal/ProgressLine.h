#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

namespace update_metadata_tool::terminal {

/// Tells somebody who waits what is being done, in one line of a terminal that is written anew.
///
/// The line appears when a second has passed, or before work that gives no chance to write it then,
/// and changes four times a second at most. It keeps to the width of the terminal: what the work is
/// gives way to how long it has taken.
class ProgressLine {
 public:
  using Clock = std::chrono::steady_clock;

  /// \param columns  of the terminal, at least one; without a terminal nothing is ever written
  /// \param now      tells the time; the work begins at the time of the construction
  ProgressLine(std::ostream& err, std::optional<std::size_t> columns,
               std::function<Clock::time_point()> now = Clock::now);

  /// Removes the line.
  ~ProgressLine();

  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// Says what is done from now on, in a few words of ASCII: "reading the document".
  void begin(std::string work);

  /// The same for work that may take long without a word from it: it is shown at once, however
  /// soon it is done then.
  void beginSilent(std::string work);

  /// Shows the time that has passed, if it is due. Cheap, so call it often.
  void update();

  /// Tells whether it has taken so long by now that the line is shown.
  bool isDue() const;

  /// Removes the line, so that something else can be written. It comes back when work is begun or
  /// goes on.
  void clear();

 private:
  void show(Clock::time_point now);

  std::ostream& err_;
  std::optional<std::size_t> columns_;
  std::function<Clock::time_point()> now_;
  Clock::time_point begin_;
  Clock::time_point next_;  ///< not written before
  std::string work_;
  bool isWritten_ = false;
};

/// One that is never shown.
ProgressLine& noProgress();

/// Says that the results are written to standard output, without a word until that is done. If that
/// is a terminal, they show themselves, and the line makes room for them.
void beginOutput(ProgressLine& progress);

}  // namespace update_metadata_tool::terminal
