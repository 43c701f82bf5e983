// A bench for chips that run user code: virtual time, a line, and the user code on it, which leads into its downloader
// or into the boot loader.
#pragma once

#include "inapp/demo.h"
#include "inapp/hex_pairs.h"
#include "inapp/user_command.h"
#include "sim/demo_program.h"
#include "sim/user_code.h"
#include "talk_bench.h"

namespace vrk {

// A code buffer that a file of this size has been loaded into.
inline JobImage code_of(std::size_t size) { return image_with(pattern(size), code_buffer_size); }

struct InappBench : TalkBench {
    InappBench()
        : TalkBench("line")
    {
        line.port_path = "line";
    }

    void talk(const McuRecord& model, const std::function<void(Session&)>& story)
    {
        talk_on(line, model, story);
        port.close();
    }

    LineChoice line;
};

} // namespace vrk
