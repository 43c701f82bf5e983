// The off-line programmer board as the tool meets it: a device at 115200 baud that answers frames with a CRC, is erased
// and written, and keeps what it gets. It checks each frame by its own code and remembers what was out of order.
// What it then does with a chip stands in sim/board_programs.h.
#pragma once

#include "sim/frame_device.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace sim {

struct BoardSetup {
    std::uint8_t version = 0x17; // two hexadecimal digits
    std::uint8_t capacity_kb = 62;
    bool single_area = false; // shows its memory in two banks, the second one after the second erasure
    std::optional<std::uint8_t> type; // tells the type of its chips, behind the letters T and L
    bool behind_sorter = false; // hears nothing before the sorter has been switched through
    // Of the model that it is asked to program, as every frame has to name it.
    std::uint8_t series = 7;
    std::array<std::uint8_t, 2> id{0xD1, 0x7E};
    std::int64_t start_up_us = 200'000;
    std::int64_t answer_us = 300;
    std::int64_t erase_us = 900'000;
    std::int64_t write_us = 2'500; // a frame
};

class Board final : public FrameDevice {
public:
    static constexpr std::size_t size = 0x10000;

    explicit Board(BoardSetup setup);

    // Target
    vrk::LineSettings line() const override { return line_; }
    void power(bool on) override;

    // What it holds. The second bank is that of boards with a single area, from 4000 on.
    const Bytes& memory() const { return memory_; }
    Bytes& memory() { return memory_; }
    const Bytes& second_bank() const { return second_bank_; }
    const BoardSetup& setup() const { return setup_; }
    int chips_programmed = 0; // by sim/board_programs.h
    int chips_left_of_a_thousand = 0;
    Bytes serial_memory = Bytes(size, 0); // its 24C512, which the tool reads

    int wake_bytes() const { return wake_bytes_; } // that it has heard

    // What goes wrong, beside what can with every device.
    std::optional<std::uint8_t> answers_writes_with; // in place of 80
    std::optional<std::uint8_t> answers_pages_with; // in place of 53
    std::map<std::uint32_t, int> refused; // an address: how often a frame for it is answered with 81

private:
    void listen();
    void heard(std::uint8_t byte) override;
    void judge();
    void take();
    void take_write();
    void take_page_request();
    bool names_the_model();
    void answer(std::uint8_t code, Bytes payload, std::int64_t work_us);

    BoardSetup setup_;
    vrk::LineSettings line_;
    Bytes memory_ = Bytes(size, 0xFF);
    Bytes second_bank_ = Bytes(size, 0xFF);
    bool passed_sorter_ = false;
    bool called_ = false;
    bool erased_ = false;
    bool second_erased_ = false;
    std::set<std::uint32_t> tried_; // addresses that a frame has gone to since the last erasure
    int wake_bytes_ = 0;
};

} // namespace sim
