#include "driver/Worker.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "driver/Process.h"

namespace bench::driver {
namespace {

using Words = std::map<std::string, std::string>;

Words parseWords(const std::string& output) {
  Words words;
  std::istringstream lines(output);
  std::string name;
  std::string value;
  while (lines >> name >> value) {
    words[name] = value;
  }
  return words;
}

double numberOf(const Words& words, const std::string& name) {
  return std::stod(words.at(name));
}

}  // namespace

Worker::Worker(std::string program, Clock clock) : program_(std::move(program)), clock_(clock) {
  std::istringstream lines(output({"peers"}));
  for (std::string line; std::getline(lines, line);) {
    const std::size_t tab = line.find('\t');
    std::istringstream words(line.substr(0, tab));
    const std::string title = line.substr(tab + 1);
    std::string name;
    words >> name;
    if (name == "-") {
      missing_.push_back(title);
      continue;
    }
    peers_.push_back({name, title});
    for (std::string task; words >> task;) {
      tasks_[name].push_back(task);
    }
  }
  if (peers_.empty()) {
    throw std::runtime_error(program_ + " lists no peers");
  }
}

Run Worker::measure(const std::string& task, const std::string& peer,
                    const std::string& file) const {
  const Words words = parseWords(output({task, peer, file}));
  const bool wall = clock_ == Clock::wall;
  Run run;
  run.seconds = numberOf(words, wall ? "wallSeconds" : "cpuSeconds");
  run.destructionSeconds =
      numberOf(words, wall ? "destructionWallSeconds" : "destructionCpuSeconds");
  run.keptBytes = numberOf(words, "keptBytes");
  run.peakBytes = numberOf(words, "peakBytes");
  run.digest = words.at("digest");
  return run;
}

Figures Worker::steps(const std::string& task, const std::string& file) const {
  std::istringstream lines(output({task, file}));
  Figures figures;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t tab = line.find('\t');
    std::istringstream seconds(line.substr(tab + 1));
    double wall = 0;
    double cpu = 0;
    seconds >> wall >> cpu;
    figures.emplace_back(line.substr(0, tab), clock_ == Clock::wall ? wall : cpu);
  }
  return figures;
}

void Worker::verify(const std::string& file) const {
  output({"verify", file});
}

double Worker::packagesIn(const std::string& file) const {
  return numberOf(parseWords(output({"facts", file})), "packages");
}

bool Worker::can(const std::string& peer, const std::string& task) const {
  const auto found = tasks_.find(peer);
  return found != tasks_.end() &&
         std::find(found->second.begin(), found->second.end(), task) != found->second.end();
}

std::string Worker::output(std::vector<std::string> words) const {
  words.insert(words.begin(), program_);
  return outputOf(words);
}

}  // namespace bench::driver
