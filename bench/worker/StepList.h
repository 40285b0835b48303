#pragma once

#include <ostream>

#include "peers/Stopwatch.h"

namespace bench::worker {

/// Measures steps and prints the time of each: its name, a tab, and the seconds by the wall clock
/// and by the processor clock.
class StepList {
 public:
  explicit StepList(std::ostream& out) : out_(out) {}

  template <class Task>
  void add(const char* name, Task task) {
    const peers::Duration duration = peers::durationOf(task);
    out_ << name << '\t' << duration.wallSeconds << ' ' << duration.cpuSeconds << '\n';
  }

 private:
  std::ostream& out_;
};

}  // namespace bench::worker
