// How a cycle ended. It is set at one place, the end of the cycle, and report, count, beep and the next chip of a
// repeat follow it.
#pragma once

#include <string_view>

namespace vrk {

enum class Result {
    good, // the chip holds the job, or has told what it holds
    stopped, // the user has ended it
    refused, // what is asked for cannot be done; nothing was written
    no_port, // the port could not be opened
    port_gone, // the port went while the chip was being worked on
    no_answer, // the chip fell silent before it was known, or answered out of order
    unreadable_id, // the chip could not read its own id
    unknown_chip, // its id stands for a model that the catalogue does not have
    wrong_model, // another model than the job is for
    old_firmware, // its boot loader is too old for this edition
    number_outside, // its serial number lies where the download does not write
    guarded, // a block of it forbids the other to be programmed
    erase_failed,
    programming_failed, // a block did not go in
    options_refused, // the code is in, and the chip does not go on to its options
    options_failed, // the code is in, and the options are not as wanted
    off_frequency, // all is in, and the oscillator is too far from the frequency wanted
};

// A stable word, for records and for those who read them by program.
constexpr std::string_view word_of(Result result)
{
    switch (result) {
    case Result::good:
        return "good";
    case Result::stopped:
        return "stopped";
    case Result::refused:
        return "refused";
    case Result::no_port:
        return "no-port";
    case Result::port_gone:
        return "port-gone";
    case Result::no_answer:
        return "no-answer";
    case Result::unreadable_id:
        return "unreadable-id";
    case Result::unknown_chip:
        return "unknown-chip";
    case Result::wrong_model:
        return "wrong-model";
    case Result::old_firmware:
        return "old-firmware";
    case Result::number_outside:
        return "number-outside";
    case Result::guarded:
        return "guarded";
    case Result::erase_failed:
        return "erase-failed";
    case Result::programming_failed:
        return "programming-failed";
    case Result::options_refused:
        return "options-refused";
    case Result::options_failed:
        return "options-failed";
    case Result::off_frequency:
        return "off-frequency";
    }
    return "unknown";
}

} // namespace vrk
