#include "peers/Peers.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace bench::peers {
namespace {

struct Found {
  std::vector<Peer> peers;
  std::vector<std::string_view> missing;
};

Found findPeers() {
  Found found;
  found.peers.push_back(thisLibrary());
#ifdef BENCH_SIMDJSON_VERSION
  found.peers.push_back(simdjsonOnDemand());
  found.peers.push_back(simdjsonDom());
#else
  found.missing.push_back("simdjson");
#endif
#ifdef BENCH_YYJSON_VERSION
  found.peers.push_back(yyjson());
#else
  found.missing.push_back("yyjson");
#endif
#ifdef BENCH_RAPIDJSON_VERSION
  found.peers.push_back(rapidJson());
#else
  found.missing.push_back("RapidJSON");
#endif
#ifdef BENCH_BOOST_JSON_VERSION
  found.peers.push_back(boostJson());
#else
  found.missing.push_back("Boost.JSON");
#endif
#ifdef BENCH_NLOHMANN_JSON_VERSION
  found.peers.push_back(nlohmannJson());
#else
  found.missing.push_back("nlohmann/json");
#endif
  return found;
}

const Found& foundPeers() {
  static const Found found = findPeers();
  return found;
}

}  // namespace

const std::vector<Peer>& peers() {
  return foundPeers().peers;
}

const std::vector<std::string_view>& missingPeers() {
  return foundPeers().missing;
}

const Peer& peerOf(std::string_view name) {
  const auto found = std::find_if(peers().begin(), peers().end(),
                                  [&](const Peer& peer) { return peer.name == name; });
  if (found == peers().end()) {
    throw std::invalid_argument("unknown peer: " + std::string(name));
  }
  return *found;
}

std::string readFile(const std::string& path, std::size_t padding) {
  std::ifstream file(path, std::ios_base::binary | std::ios_base::ate);
  const std::streamoff size = file.tellg();
  std::string text(static_cast<std::size_t>(size < 0 ? 0 : size) + padding, '\0');
  file.seekg(0);
  if (!file.read(text.data(), static_cast<std::streamsize>(text.size() - padding))) {
    throw std::runtime_error("cannot read " + path);
  }
  return text;
}

}  // namespace bench::peers
