// One talk with one target: made when it begins, gone when it ends, so that nothing of one chip survives into the next.
// It has the port for that time, what has come in, what is known of the chip, and whether the user wants it to stop.
// Engines send and wait through it.
#pragma once

#include "session/chip_facts.h"
#include "session/frame.h"
#include "session/receive_state.h"

#include "catalog/mcu_table.h"
#include "image/download_plan.h"
#include "options/option_bytes.h"
#include "platform/deadline.h"
#include "platform/port.h"

#include <vector>

namespace vrk {

// The line as the user wants it.
struct LineChoice {
    std::string port_path;
    std::int32_t contact_baud = 2400; // at which the chip is called
    std::int32_t max_baud = 115200; // that the two may agree on
    bool fixed_115200 = false; // called at 115200 without parity, by probe frames

    // Compares four digits with the whole number, as the boot loaders' tool always has: two lines at 115200 count as
    // two speeds. It costs a reopening of the port and harms nobody.
    bool is_one_speed() const;

    friend bool operator==(const LineChoice&, const LineChoice&) = default;
};

// What a talk knows. All of it is there to be read when the talk is over.
struct SessionFacts {
    LineChoice line;
    McuRecord connected; // the chip on the wire, as the catalogue knows it
    bool identified = false; // the status frame has come, and `connected` tells the chip
    ReceiveState rx;
    ChipFacts chip;
    RcTest rc;
    StatusBytes status_bytes{}; // as the chip has told them last
    ToldRows told; // by its last status frame

    bool parity_on = false; // what set_baud will use
    bool parity_even = false;
    bool board_mode = false; // frames to the off-line board: a CRC in place of the sum
    bool demo_mode = false; // the port carries 5A A5 frames
    bool stop_requested = false; // the user pressed stop; every wait ends on it

    DownloadPlan plan;
    std::uint16_t data_sum = 0; // of the bytes of the last data frame
    std::vector<std::int16_t> programmed; // by flash address: the byte that a good block has put there; -1: none has
    bool program_ok = false; // code and data are in the chip
    bool options_done = false; // the option stage ran and was good
    std::int64_t program_started_us = 0; // by the loop's clock
    std::string erase_time; // "mm:ss"; empty: not erased
    std::string program_time; // "mm:ss"
};

struct Session : SessionFacts {
    // `selected` is the model that the wire follows until the chip has told another. From here on the port tells its
    // bytes to this talk.
    Session(EventLoop& its_loop, Port& its_port, const McuTable& its_catalogue, const McuRecord& selected,
        const LineChoice& its_line);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    EventLoop& loop;
    Port& port;
    const McuTable& catalogue;
    McuRecord selected;

    // The model whose rules the wire follows: the selected one until a status frame names a chip that the catalogue
    // knows.
    const McuRecord& model() const { return identified ? connected : selected; }
    Check check() const; // that frames carry in the present mode
    std::string reported_id() const; // high digits and low; empty before a status frame

    // ---- the port
    bool set_baud(std::int32_t baud); // with the parity of parity_on and parity_even, 8 data bits, 1 stop bit
    bool open(); // closed first; true: open. A port that has gone stays closed, also when it is plugged in again
    bool ensure_open() { return port.is_open() || open(); }
    void close();
    void drop_counts(); // what has come and what waits to go
    void flush(); // all of that, and the frame in hand
    bool port_gone() const { return was_open_ && port.gone(); } // it was there, and is not any more
    bool is_over() const { return stop_requested || port_gone(); } // nothing more will come: every wait for it ends

    // ---- times on the line in force, ms
    int on_wire_ms(std::size_t bytes) const; // what so many bytes take, rounded up
    int leaving_ms(std::size_t bytes) const; // before the line may be switched or closed behind them
    int exchange_ms(
        std::size_t bytes) const; // what a frame of so many bytes takes with its acknowledgement, 50 at least

    // ---- sending
    void send(std::span<const std::uint8_t> frame); // in one piece, one turn of the loop if bytes still queue, 3 ms
    // Before a frame of so many bytes is sent. An acknowledgement does not say what it is for, so one that belongs to
    // an earlier sending must not vouch for this frame: before a frame that is sent again, and before the first one
    // behind it, the line has to be silent for the time of an exchange; what comes in then is dropped. Costs nothing
    // otherwise. False: the line does not fall silent, or the talk is over; then the frame must not go out.
    bool make_way(std::size_t frame_size, bool again);
    // The same, and forgets the last reply, whose trailing bytes get 5 ms to settle.
    bool expect_reply(std::size_t frame_size, bool again = false);
    bool send_short_command(std::uint8_t code); // false: the code has no short form, or the port cannot be opened
    void send_demo_command(std::uint8_t code); // after the queue has drained and 20 ms have passed

    // ---- waiting
    void wait(int ms) { wait_ms(loop, ms); } // nothing ends it early, not even stop
    // For a good reply, the end of the talk or the time-out, whichever comes first; answers reply_ok. The reply may
    // have come already: who wants a new one calls expect_reply before sending.
    bool wait_reply(int ms);
    bool wait_demo_reply(int ms); // the same for a 5A A5 frame
    // The same, until the end given, and a frame that came in with a bad check ends it too; answers reply_ok.
    bool wait_answer(const Deadline& end);
    bool pause(int ms); // that the end of the talk ends early. False: it did

    // Sends a model frame and waits for its answer, timeout_ms from the sending on. Good: true.
    bool ask_model(std::uint8_t code, int timeout_ms, std::uint8_t parameter, bool again = false);
    void send_model_command(std::uint8_t code, std::uint8_t parameter); // for those that nobody answers

    std::span<const std::uint8_t> frame() const; // the frame that has come
    std::span<const std::uint8_t> fields() const; // of it, without its check and its end byte

private:
    void forget_reply();
    bool falls_silent(int quiet_ms);

    bool was_open_ = false; // in this talk
    bool sent_again_ = false; // the last frame that made way was one that had gone out before
    std::size_t last_size_ = 0; // of that frame
    std::int64_t sent_until_us_ = 0; // when it has left
};

} // namespace vrk
