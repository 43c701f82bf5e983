// How a cycle ended. It is set at one place, the end of the cycle, and report, count, beep and the next chip of a
// repeat follow it. For those who read it by program it has a word and an exit code, for people a sentence of what to
// do next: one table, in result.cpp.
#pragma once

#include "report/text.h"

#include <span>
#include <string_view>

namespace vrk {

enum class Result {
    good, // the chip holds the job, or has told what it holds
    stopped, // the user has ended it

    // Before there is a job.
    refused, // what is asked for cannot be done; nothing was written
    file_gone, // the file is not there, or cannot be read
    file_refused, // it is no whole file of code or data, or the model has no room where it should lie
    file_empty, // it has no data
    project_refused, // the project is of another version, or of no model of the catalogue
    number_refused, // the serial number does not fit its place, or nobody knows which is next

    // At the port.
    no_port, // the port could not be opened
    port_gone, // the port went while the chip was being worked on

    // The chip is as it was.
    no_answer, // the chip fell silent before it was known, or answered out of order
    unreadable_id, // the chip could not read its own id
    unknown_chip, // its id stands for a model that the catalogue does not have
    wrong_model, // another model than the job is for
    old_firmware, // its boot loader is too old for this edition
    number_outside, // its serial number lies where the download does not write
    guarded, // a block of it forbids the other to be programmed

    // The chip was worked on, and is of no use as it is.
    erase_failed,
    programming_failed, // a block did not go in
    options_refused, // the code is in, and the chip does not go on to its options
    options_failed, // the code is in, and the options are not as wanted
    off_frequency, // all is in, and the oscillator is too far from the frequency wanted
};

// What a result is called outside of the program. Word and exit code never change their meaning.
struct ResultClass {
    Result result;
    std::string_view word; // lower case, hyphens
    int exit_code; // 0: good; 130: stopped; the others from 10 on
    Text next; // what to do next, one sentence; of good, what to do with the chip
};

std::span<const ResultClass> result_classes(); // each result once
const ResultClass& class_of(Result result);

inline std::string_view word_of(Result result) { return class_of(result).word; }

} // namespace vrk
