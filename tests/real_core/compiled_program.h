// A user program of the examples, as the compiler has just made it, in a core that can be put on a line.
#pragma once

#include "sim/core_8052.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace vrk {

struct CompiledProgram : sim::Core8052 {
    explicit CompiledProgram(const std::string& program)
    {
        std::ostringstream text;
        text << std::ifstream(hex_file(program)).rdbuf();
        EXPECT_TRUE(load(text.str())) << program;
    }
    static std::string hex_file(const std::string& program) { return std::string(FIRMWARE) + "/" + program + ".hex"; }
};

} // namespace vrk
