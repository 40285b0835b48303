#include "driver/Plan.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "driver/Experiment.h"
#include "driver/Process.h"
#include "generate/Document.h"
#include "generate/Family.h"
#include "generate/Names.h"
#include "generate/Presets.h"

namespace bench::driver {
namespace {

using generate::DocumentShape;
using generate::Family;

constexpr const char* kOurs = "ours";
// Documents up to this size are measured several times as often, because noise matters more there.
constexpr std::uintmax_t kSmallBytes = std::uintmax_t{1} << 20;
constexpr std::size_t kSmallRounds = 5;

// One document to measure.
struct Document {
  std::string name;
  std::string file;
};

// The figures of several rounds by name, in the order in which a worker prints them.
using Series = std::vector<std::pair<std::string, std::vector<double>>>;

class PlanRunner {
 public:
  PlanRunner(const Plan& plan, const Worker& worker) : plan_(plan), worker_(worker) {}

  std::vector<Row> run() {
    std::filesystem::create_directories(plan_.documents);
    for (const std::string& file : plan_.files) {
      measureDocument({std::filesystem::path(file).filename().string(), file}, true);
    }
    for (const std::string& name : plan_.presets) {
      measurePreset(name);
    }
    if (includes("hostile")) {
      for (const Family& family : generate::hostileTexts()) {
        if (family.benchmark.count != 0) {
          measureHostile(family);
        }
      }
    }
    if (includes("growth")) {
      measureGrowth();
    }
    if (includes("micro")) {
      addMicroBenchmarks();
    }
    return std::move(rows_);
  }

 private:
  bool includes(const char* task) const {
    return std::find(plan_.tasks.begin(), plan_.tasks.end(), task) != plan_.tasks.end();
  }

  std::string pathOf(const std::string& name) const {
    return (std::filesystem::path(plan_.documents) / (name + ".json")).string();
  }

  Document make(const std::string& name, const DocumentShape& shape) const {
    std::ofstream out(pathOf(name), std::ios_base::binary);
    generate::writeDocument(shape, [&out](std::string_view piece) {
      out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
    });
    return closed(out, name);
  }

  Document closed(std::ofstream& out, const std::string& name) const {
    out.close();
    if (!out) {
      throw std::runtime_error("cannot write " + pathOf(name));
    }
    return {name, pathOf(name)};
  }

  void measurePreset(const std::string& name) {
    const generate::Preset* preset = generate::findPreset(name);
    if (preset == nullptr) {
      throw std::invalid_argument("unknown preset: " + name);
    }
    const bool isPlain = name == "small" || name == "medium" || name == "large";
    const Document document = make(name, preset->shape);
    measureDocument(document, isPlain);
    if (isPlain && name != "small" && includes("parse")) {
      DocumentShape indented = preset->shape;
      indented.indent = 2;
      measureParse(make(name + ", indented", indented));
    }
    if (name == "medium" && includes("command")) {
      measureCommand(document, preset->shape);
    }
  }

  void measureDocument(const Document& document, bool parse) {
    if (parse && includes("parse")) {
      measureParse(document);
    }
    if (includes("load")) {
      measureLoad(document);
    }
    if (includes("floor")) {
      measureFloor(document);
    }
    if (includes("phases")) {
      measurePhases(document);
    }
  }

  // Returns the contenders that can do one of the tasks on one file, this library first.
  std::vector<Contender> contenders(const std::vector<std::string>& tasks,
                                    const std::string& file) const {
    std::vector<Contender> all;
    for (const std::string& task : tasks) {
      for (const PeerInfo& peer : worker_.peers()) {
        if (worker_.can(peer.name, task)) {
          all.push_back({peer.name, task, file});
        }
      }
    }
    return all;
  }

  std::size_t roundsFor(const Document& document) const {
    const bool isSmall = std::filesystem::file_size(document.file) < kSmallBytes;
    return plan_.rounds * (isSmall ? kSmallRounds : 1);
  }

  static void announce(const std::string& task, const std::string& document) {
    std::cerr << '\n' << task << ", " << document << ' ' << std::flush;
  }

  void measureParse(const Document& document) {
    announce("PARSE", document.name);
    Experiment experiment(document.name, contenders({"parse"}, document.file));
    experiment.run(worker_, roundsFor(document));
    rows_.push_back(experiment.row(milliseconds("PARSE"), "parse"));
    rows_.push_back(experiment.row(destructionMilliseconds("PARSE, destroying the tree"), "parse"));
    rows_.push_back(experiment.row(
        keptBytesPer("PARSE, tree above the text, each package", worker_.packagesIn(document.file)),
        "parse"));
  }

  void measureLoad(const Document& document) {
    announce("LOAD+QUERY", document.name);
    worker_.verify(document.file);
    Experiment experiment(document.name, contenders({"load", "load-tuned"}, document.file));
    experiment.run(worker_, roundsFor(document));
    const std::pair<const char*, const char*> forms[] = {{"load", "plain"},
                                                         {"load-tuned", "tuned"}};
    for (const auto& [task, form] : forms) {
      const std::string beside = std::string(", beside ") + form + " code";
      rows_.push_back(experiment.row(milliseconds("LOAD+QUERY" + beside), task));
      rows_.push_back(experiment.row(peakMebibytes("LOAD+QUERY" + beside + ": peak memory"), task));
    }
  }

  void measureFloor(const Document& document) {
    announce("FLOOR", document.name);
    std::vector<double> loads;
    std::vector<double> floors;
    Series steps;
    for (std::size_t round = 0; round < roundsFor(document); ++round) {
      loads.push_back(worker_.measure("load", kOurs, document.file).seconds);
      const Figures figures = worker_.steps("floor", document.file);
      append(steps, figures);
      double floor = 0;
      for (const auto& [name, seconds] : figures) {
        floor += seconds;
      }
      floors.push_back(floor);
      std::cerr << '.' << std::flush;
    }
    rows_.emplace_back("LOAD+QUERY, beside the floor", document.name, "times the floor",
                       medianOf(loads) / medianOf(floors));
    addRows("FLOOR ", document, steps);
  }

  void measurePhases(const Document& document) {
    announce("PHASES", document.name);
    Series phases;
    for (std::size_t round = 0; round < roundsFor(document); ++round) {
      append(phases, worker_.steps("phases", document.file));
      std::cerr << '.' << std::flush;
    }
    addRows("PHASE ", document, phases);
  }

  static void append(Series& series, const Figures& figures) {
    series.resize(figures.size());
    for (std::size_t i = 0; i < figures.size(); ++i) {
      series[i].first = figures[i].first;
      series[i].second.push_back(figures[i].second);
    }
  }

  void addRows(const std::string& prefix, const Document& document, const Series& seconds) {
    for (const auto& [name, values] : seconds) {
      rows_.emplace_back(prefix + name, document.name, "ms", medianOf(values) * 1e3);
    }
  }

  // Writes product data that have the base code of every product of the shape, and returns their
  // folder.
  std::string makeProductData(const DocumentShape& shape) const {
    const auto folder = std::filesystem::path(plan_.documents) / "product-data";
    std::filesystem::create_directories(folder);
    std::ofstream table(folder / "products.tsv", std::ios_base::binary);
    table << "base code\tname\tnumber\tcontrolling product\n";
    for (std::size_t i = 0; i < shape.products; ++i) {
      table << 'P' << i << '\t' << generate::productName(shape.names, i) << '\t' << i << "\t\n";
    }
    table.close();
    if (!table) {
      throw std::runtime_error("cannot write " + folder.string());
    }
    return folder.string();
  }

  // Measures whole runs of the command, as multiples of loading and querying by the library.
  void measureCommand(const Document& document, const DocumentShape& shape) {
    if (!std::filesystem::exists(plan_.command)) {
      std::cerr << "\nSkipped the command, which is not built.";
      return;
    }
    announce("COMMAND", document.name);
    DocumentShape revised = shape;
    revised.revised = 10;
    const std::string other = make(document.name + ", revised", revised).file;
    const std::string productData = makeProductData(shape);
    struct Subcommand {
      std::string label;
      std::vector<std::string> words;
      double documents;
      std::vector<double> seconds;
    };
    Subcommand subcommands[] = {
        {"lint", {"lint", document.file}, 1, {}},
        {"show", {"show", document.file}, 1, {}},
        {"plan", {"plan", document.file}, 1, {}},
        {"diff, each document", {"diff", document.file, other}, 2, {}},
        {"report", {"report", document.file, "--output", "-"}, 1, {}},
    };
    for (Subcommand& subcommand : subcommands) {
      subcommand.words.insert(subcommand.words.begin(), plan_.command);
      subcommand.words.insert(subcommand.words.end(), {"--product-data", productData});
    }
    std::vector<double> loads;
    for (std::size_t round = 0; round < plan_.rounds; ++round) {
      loads.push_back(worker_.measure("load", kOurs, document.file).seconds);
      for (Subcommand& subcommand : subcommands) {
        const Usage usage = usageOf(subcommand.words);
        subcommand.seconds.push_back(worker_.clock() == Clock::wall ? usage.wallSeconds
                                                                    : usage.cpuSeconds);
      }
      std::cerr << '.' << std::flush;
    }
    for (const Subcommand& subcommand : subcommands) {
      rows_.emplace_back("COMMAND " + subcommand.label, document.name, "times LOAD+QUERY",
                         medianOf(subcommand.seconds) / subcommand.documents / medianOf(loads));
    }
  }

  Document makeHostile(const Family& family, std::size_t count) const {
    const std::string name = std::to_string(count) + " " + std::string(family.name);
    std::ofstream out(pathOf(name), std::ios_base::binary);
    const std::string bytes = family.make(count * family.benchmark.unitBytes);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return closed(out, name);
  }

  void measureHostile(const Family& family) {
    const std::size_t count = family.benchmark.count / plan_.hostileDivisor;
    const Document document = makeHostile(family, count);
    announce("READ", document.name);
    Experiment experiment(std::string(family.description), contenders({"read"}, document.file));
    experiment.run(worker_, plan_.rounds);
    const std::string label =
        "READ, each " + std::string(family.benchmark.unit) + " of " + std::to_string(count);
    rows_.push_back(experiment.row(nanosecondsPer(label, static_cast<double>(count)), "read"));
    rows_.push_back(experiment.row(peakBytesPer(label, static_cast<double>(count)), "read"));
  }

  // Measures what doubling the input costs, as a multiple of the cost of half of it.
  void measureGrowth() {
    for (const Family& family : generate::hostileTexts()) {
      const std::size_t count = family.benchmark.count / plan_.hostileDivisor;
      if (count != 0) {
        addGrowth("read", std::string(family.description), makeHostile(family, count / 2),
                  makeHostile(family, count));
      }
    }
    const DocumentShape half = generate::findPreset("medium")->shape;
    const Document once = make("once", half);
    const std::pair<const char*, std::size_t DocumentShape::*> families[] = {
        {"products", &DocumentShape::products},
        {"components", &DocumentShape::components},
        {"packages", &DocumentShape::packages},
        {"files", &DocumentShape::files}};
    for (const auto& [name, field] : families) {
      DocumentShape full = half;
      full.*field *= 2;
      if (field == &DocumentShape::components) {
        full.fileComponents *= 2;
        full.componentsPerProduct *= 2;
      }
      addGrowth("load", name, once, make(std::string("twice the ") + name, full));
    }
  }

  void addGrowth(const std::string& task, const std::string& what, const Document& half,
                 const Document& full) {
    announce("GROWTH", what);
    Experiment experiment(what, {{kOurs, task, full.file}, {kOurs, task, half.file}});
    experiment.run(worker_, plan_.rounds);
    for (const Metric& metric : {milliseconds("time"), peakMebibytes("memory")}) {
      rows_.emplace_back("GROWTH, twice as many: " + metric.label, what, "times half",
                         experiment.median(metric, 0) / experiment.median(metric, 1));
    }
  }

  // Each line consists of task, document, unit and number, separated by tabs.
  void addMicroBenchmarks() {
    if (!std::filesystem::exists(plan_.micro)) {
      std::cerr << "\nSkipped the micro-benchmarks, which are not built.";
      return;
    }
    announce("micro-benchmarks", "this takes a while");
    std::istringstream lines(
        outputOf({plan_.micro, worker_.clock() == Clock::wall ? "--rows=wall" : "--rows=cpu"}));
    for (std::string line; std::getline(lines, line);) {
      std::istringstream fields(line);
      std::string task;
      std::string document;
      std::string unit;
      double value = 0;
      std::getline(fields, task, '\t');
      std::getline(fields, document, '\t');
      std::getline(fields, unit, '\t');
      fields >> value;
      rows_.emplace_back(task, document, unit, value);
    }
  }

  const Plan& plan_;
  const Worker& worker_;
  std::vector<Row> rows_;
};

}  // namespace

std::vector<Row> carryOut(const Plan& plan, const Worker& worker) {
  std::vector<Row> rows = PlanRunner(plan, worker).run();
  std::cerr << '\n';
  return rows;
}

}  // namespace bench::driver
