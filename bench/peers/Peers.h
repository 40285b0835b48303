#pragma once

#include "peers/Peer.h"

// One function for each source file of this folder that makes a peer.

namespace bench::peers {

Peer thisLibrary();
Peer boostJson();
Peer nlohmannJson();
Peer rapidJson();
Peer simdjsonDom();
Peer simdjsonOnDemand();

}  // namespace bench::peers
