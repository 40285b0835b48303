// bench-compare: measures this library beside others and prints one table.
//
// Every measurement runs in its own process, because memory that was used before is cheaper than
// new memory. In each round the peers take turns; the table shows medians over the rounds.

#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "driver/Plan.h"
#include "driver/Table.h"
#include "driver/Worker.h"

namespace {

using bench::driver::Clock;
using bench::driver::Plan;
using bench::driver::Row;
using bench::driver::Worker;

constexpr std::size_t kRounds = 7;

// The limits of --quick: how many presets, tasks and rounds, and the divisor for the sizes of
// hostile texts. Documents given by name get the first kFileTasks tasks.
constexpr std::size_t kQuickPresets = 2;
constexpr std::size_t kQuickTasks = 7;
constexpr std::size_t kQuickRounds = 3;
constexpr std::size_t kQuickDivisor = 8;
constexpr std::size_t kFileTasks = 4;

#ifdef __clang__
constexpr const char* kCompiler = "Clang " __clang_version__;
#else
constexpr const char* kCompiler = "GCC " __VERSION__;
#endif

std::string processor() {
  std::ifstream list("/proc/cpuinfo");
  for (std::string line; std::getline(list, line);) {
    if (line.rfind("model name", 0) == 0) {
      return line.substr(line.find(':') + 2);
    }
  }
  return "unknown processor";
}

void writeCircumstances(std::ostream& out, const Plan& plan, const Worker& worker, Clock clock) {
  const std::time_t now = std::time(nullptr);
  // The header row of the table shows the versions of the peers.
  out << std::put_time(std::gmtime(&now), "%Y-%m-%d") << ", " << processor() << ", " << kCompiler
      << ", medians of " << plan.rounds << " rounds, "
      << (clock == Clock::wall ? "elapsed time" : "processor time") << ".\n";
  for (const std::string& title : worker.missingPeers()) {
    out << title << " is not installed and was skipped.\n";
  }
  out << '\n';
}

int run(int argc, char** argv) {
  const std::filesystem::path here = std::filesystem::path(argv[0]).parent_path();
  const std::vector<std::string> allTasks = {"parse",   "load",    "floor",  "phases",
                                             "command", "hostile", "growth", "micro"};
  Plan plan;
  Clock clock = Clock::wall;
  bool isQuick = false;
  bool json = false;

  CLI::App app("Compare this library with others; each measurement runs in its own process.",
               "bench-compare");
  app.add_option("files", plan.files, "documents to measure instead of generated ones")
      ->check(CLI::ExistingFile);
  app.add_flag("--quick", isQuick, "only small and medium documents, few rounds, few levels");
  app.add_option("--presets", plan.presets, "generated documents, separated by commas")
      ->delimiter(',');
  app.add_option("--tasks", plan.tasks, "what to measure, separated by commas")
      ->delimiter(',')
      ->check(CLI::IsMember(allTasks));
  app.add_option("--rounds", plan.rounds, "rounds; five times as many for a small document")
      ->check(CLI::PositiveNumber);
  app.add_option("--documents", plan.documents, "folder for generated documents");
  app.add_option("--clock", clock, "wall or cpu; use cpu if the machine is shared")
      ->transform(CLI::CheckedTransformer(
          std::map<std::string, Clock>{{"wall", Clock::wall}, {"cpu", Clock::cpu}}));
  app.add_flag("--json", json, "write JSON instead of Markdown");
  CLI11_PARSE(app, argc, argv);

  if (plan.presets.empty() && plan.files.empty()) {
    plan.presets = {"small",  "medium",           "medium-continued", "large",
                    "shared", "shared-continued", "repeated"};
    plan.presets.resize(isQuick ? kQuickPresets : plan.presets.size());
  }
  if (plan.tasks.empty()) {
    plan.tasks = allTasks;
    plan.tasks.resize(!plan.files.empty() ? kFileTasks : isQuick ? kQuickTasks : allTasks.size());
  }
  if (plan.rounds == 0) {
    plan.rounds = isQuick ? kQuickRounds : kRounds;
  }
  plan.hostileDivisor = isQuick ? kQuickDivisor : 1;
  plan.micro = (here / "bench-micro").string();
  plan.command = (here.parent_path() / "tools/update-metadata/update-metadata").string();

  const Worker worker((here / "bench-worker").string(), clock);
  const std::vector<Row> rows = carryOut(plan, worker);
  if (json) {
    writeJson(std::cout, rows);
  } else {
    writeCircumstances(std::cout, plan, worker, clock);
    writeMarkdown(std::cout, worker.peers(), rows);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& failure) {
    std::cerr << "bench-compare: " << failure.what() << '\n';
    return 1;
  }
}
