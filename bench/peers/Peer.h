#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "answers/Answers.h"
#include "peers/Probe.h"

namespace bench::peers {

/// One way from a file to a tree of values, and to answers. An operation that a way does not have
/// is null.
struct Peer {
  std::string_view name;   ///< as the worker is told it
  std::string_view title;  ///< as tables show it

  /// Reads the file outside of the probe, measures text to tree, then the tree's destruction, and
  /// returns the census of the tree.
  std::uint64_t (*parse)(const std::string& path, Probe& probe);

  /// Reads the file outside of the probe, measures reading and destroying its text however deep or
  /// wrong it is, and returns the number of elements or members at the top, or kRefused.
  std::uint64_t (*read)(const std::string& path, Probe& probe);

  /// File to answers, everything else destroyed at the end: by insertion, and in the tuned form.
  answers::Answers (*load)(const std::string& path);
  answers::Answers (*loadTuned)(const std::string& path);
};

constexpr std::uint64_t kRefused = ~std::uint64_t{0};

/// This library, then those that were found when the benchmarks were built.
const std::vector<Peer>& peers();

/// The titles of those that were not.
const std::vector<std::string_view>& missingPeers();

/// The peer of that name. \throws std::invalid_argument if there is none
const Peer& peerOf(std::string_view name);

/// Reads a file at once into a text that has room for it and not more.
std::string readFile(const std::string& path);

}  // namespace bench::peers
