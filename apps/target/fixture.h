// A fixture of a line: chips come into it by themselves, one after the other. A chip that runs its user code is taken
// out, and so is one that was left in its boot loader; the next one has power a while later.
#pragma once

#include "sim/chip.h"
#include "sim/posix_loop.h"

#include <fstream>
#include <string>

namespace vrk {

struct FixtureWords {
    std::string pause_ms; // between two chips; empty: no fixture
    std::string chips; // a file that gets a line for each chip that was written and then ran; empty: none
    std::string peek; // "ADDRESS:COUNT", hexadecimal and decimal: what of its flash stands in that line
};

class Fixture {
public:
    Fixture(sim::PosixLoop& loop, sim::Chip& chip)
        : loop_(loop)
        , chip_(chip)
    {
    }
    // Puts the first chip in. False: one of the words cannot be; `fault` then says which.
    bool begin(const FixtureWords& words, std::string& fault);

private:
    void put_in();
    void take_out();
    void look_after();
    void state_changed(sim::Chip::State state);

    sim::PosixLoop& loop_;
    sim::Chip& chip_;
    std::ofstream chips_;
    std::size_t peek_first_ = 0;
    std::size_t peek_count_ = 0;
    std::int64_t pause_us_ = 0;
    bool written_ = false; // this chip has been
    int frames_ = 0; // when it was last looked after
    int idle_looks_ = 0;
};

} // namespace vrk
