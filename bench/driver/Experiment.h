#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "driver/Table.h"
#include "driver/Worker.h"

namespace bench::driver {

/// One peer at one task on one file.
struct Contender {
  std::string peer;
  std::string task;
  std::string file;
};

/// What rows show of the runs.
struct Metric {
  std::string label;
  std::string unit;
  double (*value)(const Run& run);
  double scale;  ///< what a run's value is multiplied by
};

Metric milliseconds(std::string label);
Metric destructionMilliseconds(std::string label);
Metric peakMebibytes(std::string label);
Metric nanosecondsPer(std::string label, double count);
Metric keptBytesPer(std::string label, double count);
Metric peakBytesPer(std::string label, double count);

/// Contenders that are measured alternately, round by round. The first is this library.
class Experiment {
 public:
  Experiment(std::string document, std::vector<Contender> contenders);

  /// Runs every contender once a round; each round begins with another one.
  ///
  /// \throws std::runtime_error  two contenders on one file came to different results
  void run(const Worker& worker, std::size_t rounds);

  /// One row: the medians of this library's runs and of those that do `task`, each in its column.
  Row row(const Metric& metric, const std::string& task) const;

  /// The median of the contender at `place`.
  double median(const Metric& metric, std::size_t place) const;

 private:
  void compareResults() const;

  std::string document_;
  std::vector<Contender> contenders_;
  std::vector<std::vector<Run>> runs_;  // of each contender
};

/// The middle of some numbers; of an even count, the mean of the two in the middle.
double medianOf(std::vector<double> numbers);

}  // namespace bench::driver
