#pragma once

#include <cstdint>

#include "peers/Stopwatch.h"

namespace bench::peers {

/// Resident memory of this process in bytes.
std::int64_t residentBytes();

/// The peak resident memory of this process since resetPeak(), in bytes.
std::int64_t peakResidentBytes();

/// Forgets earlier peaks if the system allows it.
void resetPeak();

/// The result of one measurement.
struct Findings {
  Duration task;
  Duration destruction;        ///< of the task's result, if measured
  std::int64_t keptBytes = 0;  ///< memory held after the task, beyond that before it
  std::int64_t peakBytes = 0;  ///< peak memory during the task, beyond that before it
};

/// Measures one task in a process that has done nothing else.
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

  /// Destroys the task's result and measures the time.
  template <class Task>
  void destruction(Task task) {
    findings_.destruction = durationOf(task);
  }

  const Findings& findings() const noexcept { return findings_; }

 private:
  Findings findings_;
};

}  // namespace bench::peers
