// A job as somebody asks for it in words: names of files, a model, options. Nothing of it has been looked at yet.
#pragma once

#include "image/file_buffer.h"
#include "session/session.h"

#include <optional>
#include <string>
#include <vector>

namespace vrk {

struct OptionWish {
    std::string name; // "clock-source"
    std::string choice; // "internal"
    friend bool operator==(const OptionWish&, const OptionWish&) = default;
};

// A serial number as it is asked for. Of a project only the next value can be told; the project tells the rest.
struct NumberWish {
    BufferKind kind = BufferKind::code;
    std::optional<std::string> address; // hexadecimal, of the number's last byte
    std::optional<std::string> bytes;
    std::optional<std::string> next; // decimal, zero padded
    std::optional<std::string> step;
    std::optional<std::string> system; // "hex", "bcd", "ascii"
    friend bool operator==(const NumberWish&, const NumberWish&) = default;
};

struct Recipe {
    std::string file; // code, or a project
    std::string eeprom; // empty: none
    std::string model; // empty with a project
    bool english = false; // the edition: it decides which page of options a model has
    std::string start = "0"; // hexadecimal, where the code is put; as a hand would type it into the window
    std::string eeprom_start = "0";
    std::vector<OptionWish> options;
    std::vector<NumberWish> numbers; // at most one a buffer
    bool numbers_are_kept = false; // books know which is next: what stands in a project only begins an order
    LineChoice line;
};

} // namespace vrk
