#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "driver/Table.h"
#include "driver/Worker.h"

namespace bench::driver {

/// One peer doing one task on one file.
struct Contender {
  std::string peer;
  std::string task;
  std::string file;
};

/// A property of runs that rows show.
struct Metric {
  std::string label;
  std::string unit;
  double (*value)(const Run& run);
  double scale;  ///< factor for a run's value
};

Metric milliseconds(std::string label);
Metric destructionMilliseconds(std::string label);
Metric peakMebibytes(std::string label);
Metric nanosecondsPer(std::string label, double count);
Metric keptBytesPer(std::string label, double count);
Metric peakBytesPer(std::string label, double count);

/// Contenders that take turns, round by round. The first is this library.
class Experiment {
 public:
  Experiment(std::string document, std::vector<Contender> contenders);

  /// Runs every contender once per round; each round starts with a different one.
  ///
  /// \throws std::runtime_error  two contenders returned different results for one file
  void run(const Worker& worker, std::size_t rounds);

  /// Returns one row: the median of this library's runs, and in its column the median of each
  /// contender that does `task`.
  Row row(const Metric& metric, const std::string& task) const;

  /// The median of the contender at index `place`.
  double median(const Metric& metric, std::size_t place) const;

 private:
  void compareResults() const;

  std::string document_;
  std::vector<Contender> contenders_;
  std::vector<std::vector<Run>> runs_;  // for each contender
};

/// The median of some numbers; for an even count, the mean of the middle two.
double medianOf(std::vector<double> numbers);

}  // namespace bench::driver
