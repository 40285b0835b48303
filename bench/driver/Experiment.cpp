#include "driver/Experiment.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <utility>

namespace bench::driver {
namespace {

constexpr double kMillisecondsPerSecond = 1e3;
constexpr double kNanosecondsPerSecond = 1e9;
constexpr double kBytesPerMebibyte = 1024.0 * 1024.0;

double secondsOf(const Run& run) {
  return run.seconds;
}

double destructionSecondsOf(const Run& run) {
  return run.destructionSeconds;
}

double keptBytesOf(const Run& run) {
  return run.keptBytes;
}

double peakBytesOf(const Run& run) {
  return run.peakBytes;
}

}  // namespace

Metric milliseconds(std::string label) {
  return {std::move(label), "ms", secondsOf, kMillisecondsPerSecond};
}

Metric destructionMilliseconds(std::string label) {
  return {std::move(label), "ms", destructionSecondsOf, kMillisecondsPerSecond};
}

Metric peakMebibytes(std::string label) {
  return {std::move(label), "MiB", peakBytesOf, 1 / kBytesPerMebibyte};
}

Metric nanosecondsPer(std::string label, double count) {
  return {std::move(label), "ns", secondsOf, kNanosecondsPerSecond / count};
}

Metric keptBytesPer(std::string label, double count) {
  return {std::move(label), "bytes", keptBytesOf, 1 / count};
}

Metric peakBytesPer(std::string label, double count) {
  return {std::move(label), "bytes", peakBytesOf, 1 / count};
}

Experiment::Experiment(std::string document, std::vector<Contender> contenders)
    : document_(std::move(document)), contenders_(std::move(contenders)) {
  runs_.resize(contenders_.size());
}

void Experiment::run(const Worker& worker, std::size_t rounds) {
  for (std::size_t round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < contenders_.size(); ++i) {
      const std::size_t place = (round + i) % contenders_.size();
      const Contender& contender = contenders_[place];
      runs_[place].push_back(worker.measure(contender.task, contender.peer, contender.file));
    }
    std::cerr << '.' << std::flush;
  }
  compareResults();
}

void Experiment::compareResults() const {
  for (std::size_t i = 0; i < contenders_.size(); ++i) {
    for (const Run& run : runs_[i]) {
      if (contenders_[i].file == contenders_[0].file && run.digest != runs_[0][0].digest) {
        throw std::runtime_error(contenders_[i].peer + " and " + contenders_[0].peer +
                                 " differ in their results of " + contenders_[i].task + " " +
                                 contenders_[i].file);
      }
    }
  }
}

Row Experiment::row(const Metric& metric, const std::string& task) const {
  Row row(metric.label, document_, metric.unit, median(metric, 0));
  for (std::size_t i = 1; i < contenders_.size(); ++i) {
    if (contenders_[i].task == task) {
      row.add(contenders_[i].peer, median(metric, i));
    }
  }
  return row;
}

double Experiment::median(const Metric& metric, std::size_t place) const {
  std::vector<double> values;
  for (const Run& run : runs_[place]) {
    values.push_back(metric.value(run) * metric.scale);
  }
  return medianOf(std::move(values));
}

double medianOf(std::vector<double> numbers) {
  if (numbers.empty()) {
    throw std::invalid_argument("an empty list has no median");
  }
  std::sort(numbers.begin(), numbers.end());
  const std::size_t middle = numbers.size() / 2;
  return numbers.size() % 2 != 0 ? numbers[middle] : (numbers[middle - 1] + numbers[middle]) / 2;
}

}  // namespace bench::driver
