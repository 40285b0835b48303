// bench-micro: single operations of this library, and the floors below them.
//
// With --rows=wall or --rows=cpu, prints each median on that clock as a line of task, document,
// unit and number, separated by tabs, for bench-compare. Otherwise accepts Google Benchmark's own
// options and prints its output.

#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "micro/Counters.h"

namespace {

constexpr std::string_view kRows = "--rows=";
constexpr double kNanosecondsPerSecond = 1e9;

class RowReporter : public benchmark::BenchmarkReporter {
 public:
  explicit RowReporter(bool usesWallClock) : usesWallClock_(usesWallClock) {}

  bool ReportContext(const Context& /*context*/) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") {
        continue;
      }
      // The name consists of task and document, separated by a tab.
      const std::string& name = run.run_name.function_name;
      const double time = usesWallClock_ ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
      printRow(name, benchmark::GetTimeUnitString(run.time_unit), time);
      for (const auto& [unit, counter] : run.counters) {
        if (unit == bench::micro::kElements) {
          const double seconds = time / benchmark::GetTimeUnitMultiplier(run.time_unit);
          printRow(name, "ns each", seconds * kNanosecondsPerSecond / counter.value);
          printRow(name, "each second", counter.value / seconds);
        } else {
          printRow(name, unit, counter.value);
        }
      }
    }
  }

 private:
  static void printRow(const std::string& name, const std::string& unit, double value) {
    std::cout << name << '\t' << unit << '\t' << value << '\n';
  }

  bool usesWallClock_;
};

}  // namespace

int main(int argc, char** argv) {
  std::vector<char*> words(argv, argv + argc);
  static char repetitions[] = "--benchmark_repetitions=5";
  const bool rows = argc > 1 && std::string_view(argv[1]).rfind(kRows, 0) == 0;
  if (rows) {
    words[1] = repetitions;
  }
  int count = static_cast<int>(words.size());
  benchmark::Initialize(&count, words.data());
  if (benchmark::ReportUnrecognizedArguments(count, words.data())) {
    return 1;
  }
  RowReporter reporter(rows && std::string_view(argv[1]).substr(kRows.size()) == "wall");
  benchmark::RunSpecifiedBenchmarks(rows ? &reporter : nullptr);
  return 0;
}
