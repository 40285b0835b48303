#pragma once

#include <chrono>
#include <ctime>

namespace bench::peers {

/// The time that something took, by the wall clock and by this process's processor clock.
struct Duration {
  double wallSeconds = 0;
  double cpuSeconds = 0;
};

/// Measures how long `task` takes.
template <class Task>
Duration durationOf(Task&& task) {
  const std::clock_t cpu = std::clock();
  const auto wall = std::chrono::steady_clock::now();
  task();
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - wall;
  const auto ticks = static_cast<double>(std::clock() - cpu);
  return {elapsed.count(), ticks / static_cast<double>(CLOCKS_PER_SEC)};
}

}  // namespace bench::peers
