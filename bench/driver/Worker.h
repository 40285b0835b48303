#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace bench::driver {

/// Numbers by name, in the order in which a worker prints them.
using Figures = std::vector<std::pair<std::string, double>>;

/// The findings of one run of a task.
struct Run {
  double seconds = 0;
  double destructionSeconds = 0;
  double keptBytes = 0;
  double peakBytes = 0;
  std::string digest;  ///< of the tree, of the answers, or of the outcome of reading
};

/// One of the peers that the worker was built with.
struct PeerInfo {
  std::string name;
  std::string title;
};

enum class Clock { wall, cpu };

/// The program that measures, started again for every request.
class Worker {
 public:
  Worker(std::string program, Clock clock);

  /// Runs one task of a peer on a file.
  Run measure(const std::string& task, const std::string& peer, const std::string& file) const;

  /// Times the steps of a task of this library: "phases" or "floor".
  Figures steps(const std::string& task, const std::string& file) const;

  /// Checks that all peers give the same answers about a file. \throws std::runtime_error if they
  /// differ
  void verify(const std::string& file) const;

  /// How many packages a document describes.
  double packagesIn(const std::string& file) const;

  /// The peers that were built, this library first.
  const std::vector<PeerInfo>& peers() const noexcept { return peers_; }

  /// The titles of peers that were not installed.
  const std::vector<std::string>& missingPeers() const noexcept { return missing_; }

  /// The clock that times are taken from.
  Clock clock() const noexcept { return clock_; }

  /// Whether a peer can do a task.
  bool can(const std::string& peer, const std::string& task) const;

 private:
  std::string output(std::vector<std::string> words) const;

  std::string program_;
  Clock clock_;
  std::vector<PeerInfo> peers_;
  std::vector<std::string> missing_;
  std::map<std::string, std::vector<std::string>> tasks_;
};

}  // namespace bench::driver
