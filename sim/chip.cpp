#include "sim/chip.h"

#include "sim/chip_clock.h"
#include "sim/hex_text.h"
#include "sim/waveform.h"

#include <algorithm>
#include <cstdlib>

namespace sim {

namespace {

constexpr std::uint8_t sync_byte = 0x7F;
constexpr int syncs_to_measure = 8; // one count each
// In answer to its status frame it wants a command. So many sync bytes instead mean that the frame was not heard; the
// few that are still on their way when it was heard do not.
constexpr int syncs_to_call_again = 16;
constexpr std::int32_t probe_baud = 115200;
constexpr std::int64_t frame_gap_ns = 50'000'000; // a pause this long inside a frame ends it

std::size_t flash_size(const ChipModel& model)
{
    // Also where there is no data flash, its last address is the one before the loader.
    return static_cast<std::size_t>(std::max({model.isp_start, model.ap_last + 1, model.eeprom_last + 1}));
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

vrk::LineSettings loader_line(const ChipModel& model, std::int32_t baud)
{
    const vrk::Parity parity = model.parity_even ? vrk::Parity::even : vrk::Parity::odd;
    return {baud, model.parity ? parity : vrk::Parity::none, 8, 1};
}

bool near(std::int32_t baud, std::int32_t wanted) { return std::abs(baud - wanted) * 25 <= wanted; }

} // namespace

std::string state_name(Chip::State state)
{
    constexpr const char* names[] = {"off", "starting", "listening", "called", "named", "testing RC", "speed set",
        "erased", "writing", "code ended", "options written", "user code"};
    return names[static_cast<std::size_t>(state)];
}

Chip::Chip(ChipSetup setup)
    : setup_(std::move(setup))
    , reader_(setup_.model.long_frame)
    , flash_(flash_size(setup_.model))
    , line_(loader_line(setup_.model, 9600))
{
}

std::string Chip::state_name() const { return sim::state_name(state_); }
std::string Chip::violations() const { return joined(violations_); }
std::string Chip::line_faults() const { return joined(line_faults_); }

std::vector<std::uint8_t> Chip::data_flash() const
{
    const ChipModel& model = setup_.model;
    if (model.eeprom_last <= model.eeprom_first)
        return {};
    return flash_.range(static_cast<std::size_t>(model.eeprom_first), static_cast<std::size_t>(model.eeprom_last) + 1);
}

int Chip::frame_count(std::uint8_t code) const
{
    const auto found = frames_.find(code);
    return found == frames_.end() ? 0 : found->second;
}

bool Chip::complain(const std::string& what)
{
    violations_.push_back(what);
    return false;
}

bool Chip::want(const CommandFrame& frame, std::size_t index, std::uint8_t wanted, const char* meaning)
{
    if (frame.at(index) == wanted)
        return true;
    return complain("frame " + hex(frame.code(), 2) + ": byte " + std::to_string(index) + " (" + meaning + ") is " +
        hex(frame.at(index), 2) + ", wanted " + hex(wanted, 2));
}

std::uint16_t Chip::own_id() const
{
    if (faults.reported_id)
        return *faults.reported_id;
    const ChipModel& model = setup_.model;
    const std::string& text = setup_.reports_alt_id && !model.alt_id.empty() ? model.alt_id : model.id;
    const auto value = static_cast<std::uint16_t>(std::strtoul(text.c_str(), nullptr, 16));
    return text.size() == 2 ? static_cast<std::uint16_t>(value << 8U | 0xFFU) : value;
}

// ---- power and the boot window ----

void Chip::connect(Surroundings& surroundings) { surroundings_ = &surroundings; }

void Chip::enter(State state)
{
    if (state == state_)
        return;
    state_ = state;
    for (const auto& watch : on_state_change)
        watch(state);
}

void Chip::later(std::int64_t delay_ns, Work work)
{
    surroundings_->call_at(surroundings_->now_ns() + delay_ns, [this, epoch = epoch_, task = std::move(work)] {
        if (epoch == epoch_)
            task();
    });
}

void Chip::set_line(const vrk::LineSettings& line, bool measures)
{
    line_ = line;
    surroundings_->set_line(line, measures);
}

void Chip::power(bool on)
{
    if (on == (state_ != State::off))
        return;
    ++epoch_;
    busy_ = false;
    reader_.reset();
    if (!on) {
        surroundings_->stop_sending();
        surroundings_->stop_listening();
        enter(State::off);
        return;
    }
    ++power_ups_;
    syncs_heard_ = 0;
    last_sync_baud_ = 0;
    fixed_speed_ = false;
    tested_reload_.reset();
    tried_blocks_.clear();
    enter(State::starting);
    later(setup_.start_up_us * 1000, [this] { start_listening(); });
}

// The wait itself must not be cut short by the power change it waits for, so it does not go through later().
void Chip::power_up_after_ms(std::int64_t ms)
{
    surroundings_->call_at(surroundings_->now_ns() + ms * 1'000'000, [this] { power(true); });
}

// Told to look at P1.0 and P1.1, the loader starts only where both are grounded.
void Chip::start_listening()
{
    const bool asks_pins = is_newer(setup_.model.series) ? (setup_.options[8] & 1U) == 0
        : setup_.letter >= 'C'                           ? (setup_.options[1] & 4U) == 0
                                                         : false;
    if (asks_pins && !setup_.pins_grounded) {
        leave_loader();
        return;
    }
    set_line(loader_line(setup_.model, 9600), true);
    enter(State::listening);
    later(setup_.boot_window_us * 1000, [this] {
        if (state_ == State::listening && !busy_)
            leave_loader();
    });
}

void Chip::leave_loader()
{
    surroundings_->stop_listening();
    enter(State::user_code);
}

// ---- what comes in ----

void Chip::receive(const Arrival& arrival)
{
    if (busy_ || state_ == State::off || state_ == State::starting || state_ == State::user_code)
        return;
    const bool may_be_called = state_ == State::listening || (state_ == State::called && !reader_.inside());
    if (may_be_called && arrival.value == sync_byte) {
        heard_call(arrival);
        return;
    }
    if (state_ == State::testing_rc) {
        if (arrival.value == sync_byte && !arrival.parity_error && rc_syncs_wanted_ > 0 && --rc_syncs_wanted_ == 0)
            answer_rc_test();
        return;
    }
    syncs_heard_ = 0;
    const bool is_probe_line =
        near(arrival.sampled_as.baud, probe_baud) && arrival.sampled_as.parity == vrk::Parity::none;
    if (state_ == State::listening && !is_probe_line)
        return; // noise, or a tool at another speed
    heard_frame_byte(arrival);
}

// Sync bytes count only in a row, at one speed and with the loader's own parity.
void Chip::heard_call(const Arrival& arrival)
{
    const vrk::LineSettings& sent = arrival.sampled_as;
    const bool good = !arrival.parity_error && !arrival.framing_error && sent.parity == line_.parity;
    if (!good || (last_sync_baud_ != 0 && !near(sent.baud, last_sync_baud_)))
        syncs_heard_ = 0;
    last_sync_baud_ = sent.baud;
    if (!good)
        return;
    ++syncs_heard_;
    const bool again = state_ == State::called;
    if (syncs_heard_ < (again ? syncs_to_call_again : syncs_to_measure))
        return;
    syncs_heard_ = 0;
    handshake_baud_ = nearest_standard_baud(sent.baud);
    set_line(loader_line(setup_.model, sent.baud), false);
    send_status(sync_counts(counting_clock_hz(setup_), handshake_baud_));
}

void Chip::send_status(const std::array<std::uint16_t, 8>& counts)
{
    const std::uint16_t id = own_id();
    const StatusFacts facts{
        counts, static_cast<std::uint8_t>(id >> 8U), static_cast<std::uint8_t>(id), faults.id_unreadable};
    const Bytes frame = status_frame(setup_, facts, faults.status_layout.value_or(setup_.layout));
    busy_ = true;
    later(setup_.times.answer_us * 1000, [this, frame] { transmit(frame, [this] { enter(State::called); }); });
}

void Chip::heard_frame_byte(const Arrival& arrival)
{
    const std::int64_t now = surroundings_->now_ns();
    const bool broke_off = reader_.inside() && now - last_byte_ns_ > frame_gap_ns;
    last_byte_ns_ = now;
    if (broke_off) {
        const std::string what = "frame: broke off after " + std::to_string(reader_.count()) + " bytes";
        (frame_harmed_ ? line_faults_ : violations_).push_back(what);
        reader_.reset();
    }
    if (!reader_.inside())
        frame_harmed_ = false;
    frame_harmed_ |= arrival.tampered || arrival.parity_error || arrival.framing_error;
    if (arrival.parity_error || arrival.framing_error)
        return; // the loader drops it; the frame then fails by its length or its check
    switch (reader_.take(arrival.value)) {
    case FrameReader::Outcome::nothing:
        break;
    case FrameReader::Outcome::bad:
        (frame_harmed_ ? line_faults_ : violations_).push_back(reader_.complaint());
        break;
    case FrameReader::Outcome::frame:
        take(CommandFrame(reader_.frame()));
        break;
    }
}

// ---- what goes out ----

std::int64_t Chip::sending_time_ns(std::size_t bytes) const
{
    return byte_time_ns(line_) * static_cast<std::int64_t>(bytes);
}

void Chip::answer(std::uint8_t code, std::span<const std::uint8_t> payload, std::int64_t work_us, Work afterwards)
{
    if (state_ == State::off)
        return; // somebody who watches the states has just pulled the plug
    busy_ = true;
    const Bytes frame = reply_frame(code, payload, setup_.model.long_frame);
    later((setup_.times.answer_us + work_us) * 1000,
        [this, frame, done = std::move(afterwards)] { transmit(frame, done); });
}

void Chip::transmit(const Bytes& frame, Work afterwards)
{
    const std::vector<ReplyFaults::Piece> pieces = faults.replies.apply(frame);
    std::int64_t delay = pieces.empty() ? sending_time_ns(frame.size()) : 0; // lost on its way: it took its time
    for (const ReplyFaults::Piece& piece : pieces) {
        delay += piece.gap_us * 1000;
        if (!faults.silent)
            later(delay, [this, bytes = piece.bytes] { surroundings_->send(bytes); });
        delay += sending_time_ns(piece.bytes.size());
    }
    later(delay, [this, done = std::move(afterwards)] {
        busy_ = false;
        if (done)
            done();
    });
}

} // namespace sim
