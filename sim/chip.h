// A microcontroller with its boot loader, seen from the wire.
//
// With power the loader listens for a moment: it times the sync bytes it hears, and answers with its status frame at
// their speed. Then it takes commands, in the order in which a download needs them, and checks each one down to the
// last byte. What is wrong is written down in violations(), and the chip keeps silent or refuses, as a real one does.
// Frames that were damaged on the way are no fault of their sender; they are listed apart, in line_faults().
#pragma once

#include "sim/chip_faults.h"
#include "sim/chip_model.h"
#include "sim/flash.h"
#include "sim/frame_reader.h"
#include "sim/reply_frames.h"
#include "sim/target.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace sim {

class Chip final : public Target {
public:
    enum class State {
        off,
        starting, // power is there, the oscillator comes up
        listening, // the boot window
        called, // the status frame is out
        named, // the tool has named the model (newer protocol)
        testing_rc, // measures its RC oscillator, waits for sync bytes
        speed_set, // the link has its final speed
        erased,
        writing, // blocks come in
        code_ended, // the end of the code was told (newer protocol)
        options_written,
        user_code // the loader has left; only a new power-up brings it back
    };

    explicit Chip(ChipSetup setup);

    // Target
    void connect(Surroundings& surroundings) override;
    void receive(const Arrival& arrival) override;
    vrk::LineSettings line() const override { return line_; }
    void power(bool on) override;

    void power_up() { power(true); }
    void power_up_after_ms(std::int64_t ms);
    void power_off() { power(false); }

    // What it holds. True: nothing that is injected changes it.
    std::vector<std::uint8_t> flash() const { return flash_.range(0, flash_.size()); } // up to the boot loader
    std::vector<std::uint8_t> flash(std::size_t first, std::size_t last) const { return flash_.range(first, last + 1); }
    std::vector<std::uint8_t> data_flash() const; // empty where the model has none
    const std::array<std::uint8_t, 17>& options() const { return setup_.options; }
    const ChipSetup& setup() const { return setup_; }
    void preset_flash(std::size_t first, std::span<const std::uint8_t> data) { flash_.preset(first, data); }
    void preset_option(std::size_t row, std::uint8_t value) { setup_.options[row] = value; }

    // What it has seen.
    State state() const { return state_; }
    std::string state_name() const;
    std::vector<std::function<void(State)>> on_state_change;
    std::string violations() const; // one a line; empty if the tool did all as it should
    std::string line_faults() const; // frames that came in broken: wrong speed or parity, injected damage
    int frame_count(std::uint8_t code) const;
    int frame_count() const { return frames_seen_; }
    int power_ups() const { return power_ups_; }
    std::int32_t handshake_baud() const { return handshake_baud_; } // as measured at the last call
    std::optional<std::uint8_t> feed_pin() const { return feed_pin_; } // port * 16 + bit, or FF
    std::uint64_t ignored_bytes() const { return ignored_bytes_; } // sent for the boot area, answered, not stored

    // What goes wrong.
    ChipFaults faults;
    void keep_silent(bool silent = true) { faults.silent = silent; }
    void overhear(std::uint8_t code, int times = 1) { faults.deaf_to[code] = times; }
    void lose_reply(int n) { faults.replies.lose(n); }
    void delay_reply(int n, std::int64_t ms) { faults.replies.delay(n, ms * 1000); }
    void damage_reply(int n, std::size_t byte = 6, std::uint8_t xor_with = 0x10)
    {
        faults.replies.damage(n, byte, xor_with);
    }
    void split_reply(int n, std::size_t after_bytes, std::int64_t gap_ms)
    {
        faults.replies.split(n, after_bytes, gap_ms * 1000);
    }
    void noise_before_reply(int n, Bytes noise) { faults.replies.precede(n, std::move(noise)); }
    void refuse_block(std::uint32_t address, int times = 1000) { faults.refused_blocks[address] = times; }
    void send_wrong_sum(int times = 1) { faults.wrong_sums = times; }
    void cut_power_at_frame(int n) { faults.cut_power_at_frame = n; } // the n-th from now on, in its middle
    void report_id(std::uint16_t id) { faults.reported_id = id; }
    void report_id_unreadable() { faults.id_unreadable = true; }
    void send_status_as(StatusLayout layout) { faults.status_layout = layout; }

private:
    using Work = std::function<void()>;
    struct RcPoint {
        std::uint8_t band;
        std::uint8_t trim;
    };

    // chip.cpp: power, window, answers
    void enter(State state);
    void later(std::int64_t delay_ns, Work work); // forgotten if power goes meanwhile
    void start_listening();
    void leave_loader();
    void set_line(const vrk::LineSettings& line, bool measures);
    void heard_call(const Arrival& arrival);
    void send_status(const std::array<std::uint16_t, 8>& counts);
    void heard_frame_byte(const Arrival& arrival);
    void answer(std::uint8_t code, std::span<const std::uint8_t> payload, std::int64_t work_us, Work afterwards = {});
    void transmit(const Bytes& frame, Work afterwards);
    std::int64_t sending_time_ns(std::size_t bytes) const;
    bool complain(const std::string& what); // always false
    bool want(const CommandFrame& frame, std::size_t index, std::uint8_t wanted, const char* meaning);
    std::uint16_t own_id() const; // as it reports it

    // chip_commands.cpp
    void take(const CommandFrame& frame);
    bool in_place(const CommandFrame& frame);
    bool check_model(const CommandFrame& frame);
    void take_model_frame(const CommandFrame& frame);
    void take_read_status();
    void take_feed_pin(const CommandFrame& frame);

    // chip_memory.cpp
    void take_erase(const CommandFrame& frame);
    bool check_erase(const CommandFrame& frame);
    bool sector_count_fits(int count) const;
    void take_block(const CommandFrame& frame);
    bool check_block(const CommandFrame& frame, std::uint32_t address, std::size_t count);
    void write_half_of(const CommandFrame& frame);

    // chip_rc_test.cpp
    void take_rc_test(const CommandFrame& frame);
    void answer_rc_test();

    // chip_speed.cpp
    void take_test_speed(const CommandFrame& frame);
    void take_set_speed(const CommandFrame& frame);
    bool check_speed(const CommandFrame& frame, int ceiling);
    bool check_pause(const CommandFrame& frame);
    bool check_wait_states(const CommandFrame& frame);
    vrk::LineSettings offered_line(const CommandFrame& frame) const;

    // chip_options.cpp
    void take_options(const CommandFrame& frame);
    bool check_clock(const CommandFrame& frame, std::size_t index);
    bool check_reload(const CommandFrame& frame);
    void write_option(std::size_t row, std::uint8_t value);

    ChipSetup setup_;
    Surroundings* surroundings_ = nullptr;
    FrameReader reader_;
    Flash flash_;
    vrk::LineSettings line_;
    State state_ = State::off;
    std::uint64_t epoch_ = 0; // counts power changes
    bool busy_ = false; // works or sends: the loader polls its UART, so what comes in meanwhile is lost
    int syncs_heard_ = 0;
    std::int32_t last_sync_baud_ = 0;
    std::int64_t last_byte_ns_ = 0;
    bool frame_harmed_ = false; // a byte of the frame in hand came in damaged

    // This session, from the call on
    std::int32_t handshake_baud_ = 0;
    bool fixed_speed_ = false; // called by probe frames: stays at 115200
    std::optional<std::uint16_t> tested_reload_;
    std::set<std::uint32_t> tried_blocks_;
    std::vector<RcPoint> rc_points_;
    std::size_t rc_syncs_wanted_ = 0;
    bool missed_a_frame_ = false;

    std::vector<std::string> violations_;
    std::vector<std::string> line_faults_;
    std::map<std::uint8_t, int> frames_;
    int frames_seen_ = 0;
    int power_ups_ = 0;
    std::optional<std::uint8_t> feed_pin_;
    std::uint64_t ignored_bytes_ = 0;
};

std::string state_name(Chip::State state);

} // namespace sim
