#pragma once

#include <cstdint>

#include "peers/Stopwatch.h"

namespace bench::peers {

/// Memory of this process that lies in RAM, in bytes.
std::int64_t residentBytes();

/// The most memory of this process that ever lay in RAM since resetPeak(), in bytes.
std::int64_t peakResidentBytes();

/// Forgets earlier peaks, where the system allows it.
void resetPeak();

/// What one measurement found.
struct Findings {
  Duration task;
  Duration destruction;        ///< of what the task left, where that is measured
  std::int64_t keptBytes = 0;  ///< what the task left in memory, above what was there before
  std::int64_t peakBytes = 0;  ///< the most memory in use during the task, above the same
};

/// Measures one task in a process that has done nothing before.
class Probe {
 public:
  /// Runs and measures the task.
  template <class Task>
  void task(Task task) {
    resetPeak();
    const std::int64_t before = residentBytes();
    findings_.task = durationOf(task);
    findings_.keptBytes = residentBytes() - before;
    findings_.peakBytes = peakResidentBytes() - before;
  }

  /// Runs the destruction of what the task left and measures its time.
  template <class Task>
  void destruction(Task task) {
    findings_.destruction = durationOf(task);
  }

  const Findings& findings() const noexcept { return findings_; }

 private:
  Findings findings_;
};

}  // namespace bench::peers
