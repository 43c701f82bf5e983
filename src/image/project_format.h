// The text of a project file, which holds a whole job: model, file names, serial numbers, options, both images.
//
//   VER: 1.2
//   MCU_Type: Juniper-60Q         a value a line; the key ends at the first colon
//   ...
//   buffer_check_sum: 5347        sum of the code image's bytes, decimal
//   END
//   75816F...                     the code image from address 0, two digits a byte
//   Data_File_Begin:              from here on only in a job with an EEPROM file
//   data_buffer_check_sum: 12
//   0C00...                       the EEPROM image
//   Data_File_End
//
// UTF-8; lines end in CR LF. Nothing tells the length of an image: it is as long as its line.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vrk {

struct ProjectValue {
    std::string key;
    std::string value;
    friend bool operator==(const ProjectValue&, const ProjectValue&) = default;
};

// ---- writing -----------------------------------------------------------------------------------------------------

struct ProjectContent {
    std::vector<ProjectValue> values; // between version and sum, in this order
    std::span<const std::uint8_t> code;
    std::optional<std::span<const std::uint8_t>> data; // nothing: the job has no EEPROM file
};
std::string project_text(const ProjectContent& content);

// ---- reading -----------------------------------------------------------------------------------------------------

struct ProjectImage {
    bool found = false; // the file has a line for it
    bool sum_is_right = false; // and nothing but digits stands there, no more than the buffer holds
    std::vector<std::uint8_t> bytes; // no more than the buffer holds
};

struct Project {
    enum class Version {
        old, // of the time before versions were written: other keys, no EEPROM image
        refused, // below 1.2
        good,
    };
    Version version = Version::old;
    std::vector<ProjectValue> values; // in the order of the file, those of the frame ("VER", sums) too
    ProjectImage code;
    bool has_data = false; // the file goes on behind the code image
    ProjectImage data;

    const std::string* find(std::string_view key) const; // the first of that key; null: none
};

// Takes any text. What no project holds is passed over: lines without a colon, values longer than any path. Of an
// image, digits end at the first other character of a pair; a single digit at the end is a byte of its own.
Project parse_project(std::string_view text);

} // namespace vrk
