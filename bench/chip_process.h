// A simulated chip that answers at once, on a pseudo terminal, in a process of its own: powered, and listening until it
// is called.
#pragma once

#include "bench/peer_process.h"

namespace bench {

class ChipProcess : public PeerProcess {
public:
    explicit ChipProcess(const char* model);
};

} // namespace bench
