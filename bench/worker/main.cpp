// bench-worker: measures one task of one peer on one file, in a process that has done nothing else.
//
//   bench-worker parse|read|load|load-tuned PEER FILE   prints the findings, one per line
//   bench-worker verify FILE                            compares the answers of all peers
//   bench-worker phases FILE                            times each stage of this library
//   bench-worker floor FILE                             times what no implementation can avoid
//   bench-worker facts FILE                             prints the counts of the document
//   bench-worker peers                                  lists the peers, one per line

#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "answers/Answers.h"
#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "peers/Peer.h"
#include "peers/Probe.h"
#include "worker/Floor.h"
#include "worker/Phases.h"

namespace {

using bench::answers::Answers;
using bench::peers::Findings;
using bench::peers::Peer;
using bench::peers::Probe;
using foundation::json::Member;
using foundation::json::Object;
using foundation::json::Value;

using Load = Answers (*)(const std::string& path);

template <class Operation>
Operation require(Operation operation, const Peer& peer) {
  if (operation == nullptr) {
    throw std::invalid_argument(std::string(peer.name) + " does not do that");
  }
  return operation;
}

void print(const Findings& findings, std::uint64_t digest) {
  std::cout << std::setprecision(9) << "wallSeconds " << findings.task.wallSeconds << '\n'
            << "cpuSeconds " << findings.task.cpuSeconds << '\n'
            << "destructionWallSeconds " << findings.destruction.wallSeconds << '\n'
            << "destructionCpuSeconds " << findings.destruction.cpuSeconds << '\n'
            << "keptBytes " << findings.keptBytes << '\n'
            << "peakBytes " << findings.peakBytes << '\n'
            << "digest " << digest << std::endl;
}

void measureLoad(Load load, const std::string& path) {
  Probe probe;
  Answers answers;
  probe.task([&] { answers = load(path); });
  print(probe.findings(), bench::answers::digestOf(answers));
  // The end of the process frees the answers, which is not measured.
  std::_Exit(EXIT_SUCCESS);
}

void measure(std::string_view task, const Peer& peer, const std::string& path) {
  Probe probe;
  if (task == "parse") {
    const std::uint64_t digest = require(peer.parse, peer)(path, probe);
    print(probe.findings(), digest);
  } else if (task == "read") {
    const std::uint64_t digest = require(peer.read, peer)(path, probe);
    print(probe.findings(), digest);
  } else if (task == "load") {
    measureLoad(require(peer.load, peer), path);
  } else if (task == "load-tuned") {
    measureLoad(require(peer.loadTuned, peer), path);
  } else {
    throw std::invalid_argument("unknown task: " + std::string(task));
  }
}

void verify(const std::string& path) {
  const Answers expected = bench::peers::peers().front().load(path);
  bool differs = false;
  for (const Peer& peer : bench::peers::peers()) {
    for (const Load load : {peer.load, peer.loadTuned}) {
      if (load != nullptr && !(load(path) == expected)) {
        std::cerr << peer.title << (load == peer.load ? "" : ", tuned")
                  << " gives different answers\n";
        differs = true;
      }
    }
  }
  if (differs) {
    throw std::runtime_error("the answers about " + path + " differ");
  }
  std::cout << "entries " << bench::answers::entriesOf(expected) << '\n';
}

// Counts the packages of a section whose components contain them directly, or in the members named
// by `sides`.
std::size_t packagesIn(const Value& section, const std::vector<std::string_view>& sides) {
  std::size_t packages = 0;
  for (const Member& component : section.as<Object>()) {
    if (sides.empty()) {
      packages += component.second.as<Object>().size();
    }
    for (const std::string_view side : sides) {
      packages += component.second[side].as<Object>().size();
    }
  }
  return packages;
}

void printFacts(const std::string& path) {
  std::string text = bench::peers::readFile(path);
  const std::size_t bytes = text.size();
  const Value document = foundation::json::parseJsonText(std::move(text));
  std::cout << "bytes " << bytes << '\n'
            << "packages "
            << packagesIn(document["components"], {"delete", "extract"}) +
                   packagesIn(document["componentsWithFilesDeleted"], {})
            << '\n';
}

void printPeers() {
  for (const Peer& peer : bench::peers::peers()) {
    std::cout << peer.name << " parse" << (peer.read != nullptr ? " read" : "")
              << (peer.load != nullptr ? " load" : "")
              << (peer.loadTuned != nullptr ? " load-tuned" : "") << '\t' << peer.title << '\n';
  }
  for (const std::string_view title : bench::peers::missingPeers()) {
    std::cout << "-\t" << title << '\n';
  }
}

void run(const std::vector<std::string>& words) {
  if (words.size() == 1 && words[0] == "peers") {
    printPeers();
  } else if (words.size() == 2 && words[0] == "verify") {
    verify(words[1]);
  } else if (words.size() == 2 && words[0] == "phases") {
    bench::worker::printPhases(words[1], std::cout);
  } else if (words.size() == 2 && words[0] == "floor") {
    bench::worker::printFloor(words[1], std::cout);
  } else if (words.size() == 2 && words[0] == "facts") {
    printFacts(words[1]);
  } else if (words.size() == 3) {
    measure(words[0], bench::peers::peerOf(words[1]), words[2]);
  } else {
    throw std::invalid_argument(
        "expected: parse|read|load|load-tuned PEER FILE, "
        "verify FILE, phases FILE, floor FILE, facts FILE, or peers");
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    run(std::vector<std::string>(argv + 1, argv + argc));
    return EXIT_SUCCESS;
  } catch (const std::exception& failure) {
    std::cerr << "bench-worker: " << failure.what() << '\n';
    return EXIT_FAILURE;
  }
}
