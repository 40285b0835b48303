#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "answers/Answers.h"
#include "peers/Probe.h"

namespace bench::peers {

/// One way from a file to a tree of values, and to answers. An operation that it lacks is null.
struct Peer {
  std::string_view name;   ///< name in the worker's arguments
  std::string_view title;  ///< title in tables

  /// Reads the file outside the probe, measures text to tree and then the tree's destruction, and
  /// returns the census of the tree.
  std::uint64_t (*parse)(const std::string& path, Probe& probe);

  /// Reads the file outside the probe, measures reading and destroying its text however deep or
  /// wrong it is, and returns the number of elements or members at the top, or kRejected.
  std::uint64_t (*read)(const std::string& path, Probe& probe);

  /// File to answers, with everything else destroyed at the end: by insertion, and in the tuned
  /// form.
  answers::Answers (*load)(const std::string& path);
  answers::Answers (*loadTuned)(const std::string& path);
};

constexpr std::uint64_t kRejected = ~std::uint64_t{0};

/// This library, then the peers that were found when the benchmarks were built.
const std::vector<Peer>& peers();

/// The titles of the peers that were not found.
const std::vector<std::string_view>& missingPeers();

/// Returns the peer with that name. \throws std::invalid_argument if there is none
const Peer& peerOf(std::string_view name);

/// Reads a file at once into a text with exactly enough capacity, followed by `padding` NULs.
std::string readFile(const std::string& path, std::size_t padding = 0);

}  // namespace bench::peers
