// What the shell keeps of files between loads. Held by Shell as `loader`.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vrk {

// A digit typed over another one.
struct DigitEdit {
    std::int32_t address = 0;
    std::uint8_t before = 0; // the whole byte
    std::uint8_t after = 0;
    bool low_digit = false;
    bool was_edited = false; // the buffer, before it
};

// What hands have done to a buffer since its bytes came in, or were changed in another way.
struct EditHistory {
    std::vector<DigitEdit> done;
    std::vector<DigitEdit> undone; // the last one is the first to be done again
};

// A place that was looked for in a dump.
struct Found {
    std::int32_t address = -1; // none yet
    std::string what; // as it was typed
};

struct LoaderState {
    std::string application_dir; // where the program lies: what the stored paths begin with. Set by the program
    std::string documents_dir; // of the user: for what cannot be written beside the program. Set by the program
    bool code_is_project = false; // the code buffer came with a project: no file may be loaded over it unasked
    std::string code_path; // of the code file that was loaded last: what a reload brings in again
    std::string current_path; // the last file chosen in any dialog, whichever buffer it went to
    std::string reload_watch_path; // what Timer12 watches
    std::string reload_watch_stamp; // size and time of the file as it was loaded, or looked at first
    std::string reload_watch_seen; // of a change that has not lasted long enough yet; empty: none
    std::int64_t reload_watch_seen_us = 0; // when that was seen first, on the loop's clock
    bool edited[2] = {}; // a hand has changed the buffer since its last clear or load, by BufferKind
    EditHistory history[2]; // by BufferKind
    std::vector<std::string> recent[2]; // paths, the newest first, by Recent
    Found found[2]; // where the last search has come to, by BufferKind
    std::uint32_t acts[2] = {}; // clears and loads of each buffer so far, by BufferKind
};

} // namespace vrk
