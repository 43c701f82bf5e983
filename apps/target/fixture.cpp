#include "target/fixture.h"

#include "platform/text_number.h"
#include "sim/hex_text.h"

#include <charconv>

namespace vrk {

namespace {

constexpr std::int64_t look_us = 500'000;
constexpr int idle_looks_at_most = 4; // then nobody talks to the chip any more

} // namespace

bool Fixture::begin(const FixtureWords& words, std::string& fault)
{
    pause_us_ = static_cast<std::int64_t>(number_in(words.pause_ms) * 1000);
    if (pause_us_ <= 0) {
        fault = "a pause of a millisecond at least";
        return false;
    }
    if (!words.peek.empty()) {
        const std::size_t colon = words.peek.find(':');
        const char* end = words.peek.data() + words.peek.size();
        const auto first = std::from_chars(words.peek.data(), end, peek_first_, 16);
        const bool whole = colon != std::string::npos && first.ptr == words.peek.data() + colon &&
            std::from_chars(first.ptr + 1, end, peek_count_).ptr == end;
        if (!whole || peek_count_ == 0 || peek_first_ + peek_count_ > chip_.flash().size()) {
            fault = "a place in the flash, as 1F00:4";
            return false;
        }
    }
    if (!words.chips.empty()) {
        chips_.open(words.chips, std::ios::app);
        if (!chips_) {
            fault = "cannot write '" + words.chips + "'";
            return false;
        }
    }
    chip_.on_state_change.push_back([this](sim::Chip::State state) { state_changed(state); });
    put_in();
    look_after();
    return true;
}

void Fixture::put_in()
{
    loop_.call_at(loop_.now_us() + pause_us_, [this] {
        written_ = false;
        idle_looks_ = 0;
        chip_.power(true);
    });
}

void Fixture::take_out()
{
    loop_.call_at(loop_.now_us(), [this] {
        chip_.power(false);
        put_in();
    });
}

void Fixture::state_changed(sim::Chip::State state)
{
    if (state == sim::Chip::State::writing)
        written_ = true;
    if (state != sim::Chip::State::user_code)
        return;
    if (written_ && chips_.is_open()) {
        std::string line = "chip";
        if (peek_count_ > 0)
            line += " " + sim::hex_bytes(chip_.flash(peek_first_, peek_first_ + peek_count_ - 1));
        chips_ << line << std::endl;
    }
    take_out();
}

// A tool that gives up leaves the chip in its boot loader, where only a hand gets it out.
void Fixture::look_after()
{
    const sim::Chip::State state = chip_.state();
    const bool in_loader = state != sim::Chip::State::off && state != sim::Chip::State::starting &&
        state != sim::Chip::State::listening && state != sim::Chip::State::user_code;
    idle_looks_ = in_loader && chip_.frame_count() == frames_ ? idle_looks_ + 1 : 0;
    frames_ = chip_.frame_count();
    if (idle_looks_ >= idle_looks_at_most) {
        idle_looks_ = 0;
        take_out();
    }
    loop_.call_at(loop_.now_us() + look_us, [this] { look_after(); });
}

} // namespace vrk
