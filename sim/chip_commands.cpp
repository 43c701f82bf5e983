// What the loader does with each command, and in which order it takes them.
#include "sim/chip.h"

#include "sim/chip_clock.h"
#include "sim/hex_text.h"

#include <algorithm>

namespace sim {

namespace {

using State = Chip::State;

// The states as bits, for the column "may come in".
constexpr unsigned bit(State state) { return 1U << static_cast<unsigned>(state); }
constexpr unsigned after_call = bit(State::called) | bit(State::named) | bit(State::speed_set) | bit(State::erased) |
    bit(State::writing) | bit(State::code_ended) | bit(State::options_written);
constexpr unsigned negotiating = bit(State::called) | bit(State::named) | bit(State::speed_set);
constexpr unsigned with_speed = bit(State::speed_set) | bit(State::erased) | bit(State::writing) |
    bit(State::code_ended) | bit(State::options_written);

enum class Protocol : std::uint8_t { either, older, newer };

struct Command {
    std::uint8_t code;
    Protocol protocol;
    std::size_t parameters_least;
    std::size_t parameters_most;
    unsigned may_come_in;
    const char* name;
};

constexpr std::size_t model_parameters = 6;

// clang-format off
constexpr Command commands[] = {
//  code  protocol          parameters      may come in                                name
    { 0x00, Protocol::either,  7, 134, bit(State::erased) | bit(State::writing),       "block"          },
    { 0x30, Protocol::either,  7, 134, bit(State::erased) | bit(State::writing),       "block again"    },
    { 0x50, Protocol::either,  0,   6, after_call,                                     "read status"    },
    { 0x65, Protocol::newer,  11,  95, bit(State::named),                              "RC test"        },
    { 0x69, Protocol::newer,   6,   6, bit(State::writing) | bit(State::code_ended),   "end of code"    },
    { 0x80, Protocol::older,   6,   6, after_call,                                     "ready"          },
    { 0x82, Protocol::either,  0,   0, after_call,                                     "leave"          },
    { 0x84, Protocol::either,  7, 133, with_speed,                                     "erase"          },
    { 0x86, Protocol::either,  1,   1, bit(State::called),                             "feed pin"       },
    { 0x8A, Protocol::either,  0,   0, bit(State::listening) | bit(State::called),     "probe"          },
    { 0x8D, Protocol::either,  1,  32, bit(State::writing) | bit(State::code_ended)
                                     | bit(State::options_written),                    "options"        },
    { 0x8E, Protocol::either,  5,   6, negotiating,                                    "set speed"      },
    { 0x8F, Protocol::either,  6,   6, negotiating,                                    "test speed"     },
};
// clang-format on

const Command* find_command(std::uint8_t code)
{
    const auto found =
        std::find_if(std::begin(commands), std::end(commands), [code](const Command& c) { return c.code == code; });
    return found == std::end(commands) ? nullptr : &*found;
}

} // namespace

bool Chip::in_place(const CommandFrame& frame)
{
    const Command* command = find_command(frame.code());
    const std::string what = "frame " + hex(frame.code(), 2);
    if (command == nullptr)
        return complain(what + ": no such command");
    const bool newer = setup_.model.new_protocol;
    if (command->protocol != Protocol::either && newer != (command->protocol == Protocol::newer))
        return complain(what + " (" + command->name + "): this model does not know it");
    const std::size_t count = frame.parameter_count();
    if (count < command->parameters_least || count > command->parameters_most)
        return complain(what + " (" + command->name + "): " + std::to_string(count) + " parameters, wanted " +
            std::to_string(command->parameters_least) + " to " + std::to_string(command->parameters_most));
    unsigned may_come_in = command->may_come_in;
    if (newer && (frame.code() == 0x8F || frame.code() == 0x8E) && !fixed_speed_)
        may_come_in &= ~bit(State::called); // the model is named first
    if (newer && frame.code() == 0x8D)
        may_come_in &= ~bit(State::writing); // the code is ended first
    if ((may_come_in & bit(state_)) == 0)
        return complain(
            what + " (" + command->name + "): out of place, the loader is in state \"" + state_name() + "\"");
    return true;
}

void Chip::take(const CommandFrame& frame)
{
    ++frames_seen_;
    ++frames_[frame.code()];
    syncs_heard_ = 0;
    const bool is_block = frame.code() == 0x00 || frame.code() == 0x30;
    if (faults.cut_power_at_frame && --*faults.cut_power_at_frame <= 0) {
        faults.cut_power_at_frame.reset();
        if (is_block && in_place(frame))
            write_half_of(frame);
        power(false);
        return;
    }
    if (int& times = faults.deaf_to[frame.code()]; times > 0) {
        --times;
        missed_a_frame_ = true;
        return;
    }
    if (!in_place(frame))
        return;
    switch (frame.code()) {
    case 0x00:
    case 0x30:
        take_block(frame);
        break;
    case 0x50:
        frame.parameter_count() == 0 ? take_read_status() : take_model_frame(frame);
        break;
    case 0x65:
        take_rc_test(frame);
        break;
    case 0x69:
    case 0x80:
        take_model_frame(frame);
        break;
    case 0x82:
        leave_loader();
        break;
    case 0x84:
        take_erase(frame);
        break;
    case 0x86:
        take_feed_pin(frame);
        break;
    case 0x8A:
        fixed_speed_ = true;
        handshake_baud_ = 115200;
        set_line({115200, vrk::Parity::none, 8, 1}, false);
        send_status(probe_counts(counting_clock_hz(setup_)));
        break;
    case 0x8D:
        take_options(frame);
        break;
    case 0x8E:
        frame.parameter_count() == model_parameters ? take_model_frame(frame) : take_set_speed(frame);
        break;
    case 0x8F:
        take_test_speed(frame);
        break;
    default:
        break;
    }
}

// ---- model frames ----

// The id is the one that the tool has by name, or the one that the chip has told.
bool Chip::check_model(const CommandFrame& frame)
{
    if (frame.parameter_count() != model_parameters)
        return complain("frame " + hex(frame.code(), 2) + ": " + std::to_string(frame.parameter_count()) +
            " parameters, wanted none or the 6 that name the model");
    bool good = want(frame, 6, static_cast<std::uint8_t>(setup_.model.series), "series");
    good &= want(frame, 7, 0, "parameter");
    good &= want(frame, 8, 0x36, "mark");
    good &= want(frame, 9, 0x01, "mark");
    const std::uint16_t found = static_cast<std::uint16_t>(frame.at(10) << 8U | frame.at(11));
    const auto named = [](const std::string& id) {
        return static_cast<std::uint16_t>(std::stoul((id + "FFFF").substr(0, 4), nullptr, 16));
    };
    const ChipModel& model = setup_.model;
    const bool known = found == own_id() || found == named(model.id) ||
        (!model.alt_id.empty() && found == named(model.alt_id)) || (found == setup_.long_id && found != 0);
    if (!known)
        return complain(
            "frame " + hex(frame.code(), 2) + ": model id " + hex(found, 4) + ", this one is " + hex(own_id(), 4));
    return good;
}

// In the newer protocol an answer names the command that the loader wants next.
void Chip::take_model_frame(const CommandFrame& frame)
{
    if (!check_model(frame))
        return;
    switch (frame.code()) {
    case 0x50:
        if (state_ == State::called)
            enter(State::named);
        answer(0x8F, {}, 0);
        break;
    case 0x8E: // keeps the speed of the call
        if (!has_rc_test(setup_.model.series)) {
            complain("frame 8E: the model's name in place of a speed");
            return;
        }
        enter(State::speed_set);
        answer(0x84, {}, 0);
        break;
    case 0x69:
        enter(State::code_ended);
        answer(0x8D, {}, 0);
        break;
    default:
        answer(0x80, {}, 0);
        break;
    }
}

// ---- small ones ----

void Chip::take_read_status()
{
    const bool with_options = faults.answers_without_options <= 0;
    if (!with_options)
        --faults.answers_without_options;
    const Bytes frame = read_status_frame(setup_, with_options);
    busy_ = true;
    later(setup_.times.answer_us * 1000, [this, frame] { transmit(frame, {}); });
}

void Chip::take_feed_pin(const CommandFrame& frame)
{
    const std::uint8_t pin = frame.at(6);
    if (pin != 0xFF && (pin >> 4U > 4 || (pin & 0xFU) > 7)) {
        complain("frame 86: pin " + hex(pin, 2) + ", wanted port * 16 + bit with ports 0 to 4, or FF");
        return;
    }
    feed_pin_ = pin;
    answer(setup_.model.new_protocol ? 0x50 : 0x86, {}, 0);
}

} // namespace sim
