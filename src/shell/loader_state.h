// What the shell keeps of files between loads. Held by Shell as `loader`.
#pragma once

#include <cstdint>
#include <string>

namespace vrk {

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
    std::uint32_t acts[2] = {}; // clears and loads of each buffer so far, by BufferKind
};

} // namespace vrk
