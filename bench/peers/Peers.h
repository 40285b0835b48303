#pragma once

#include "peers/Peer.h"

// One function for each source file in this folder that defines a peer.

namespace bench::peers {

Peer thisLibrary();
Peer boostJson();
Peer nlohmannJson();
Peer rapidJson();
Peer simdjsonDom();
Peer simdjsonOnDemand();
Peer yyjson();

}  // namespace bench::peers
