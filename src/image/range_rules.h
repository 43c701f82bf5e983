// What of a loaded image the selected model can take. Pure: the rules look at the model and the bytes and say what the
// new end of the image is, what was found and what is to be cleared; nothing is changed here.
//
// Four kinds of model are told apart:
//   separate EEPROM   code and data come from two files; each is cut to its own area
//   no data flash     a cut to the code area comes first, then one of the two below
//   flat              one image holds code and then data; the gap between them holds nothing
//   boot area         the older families: code, then on some data flash, up to a boot loader of varying size
// The binary loader looks at addresses where the HEX loader looks at bytes, since a binary file has no holes.
#pragma once

#include "catalog/mcu_record.h"
#include "image/file_buffer.h"
#include "image/image_file.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vrk {

struct AddressRange {
    std::int32_t first = 0;
    std::int32_t last = -1; // inclusive; below first: empty
    friend bool operator==(const AddressRange&, const AddressRange&) = default;
};

struct RangeQuestion {
    const McuRecord& model; // the selected one
    std::int32_t shown_ap_last; // last code address as the user sees it; ap_last but where code reaches the boot area
    FileKind file;
    BufferKind buffer;
    std::span<const std::uint8_t> image; // the whole buffer, index is the address
    std::int32_t low; // where the load began
    std::int32_t high; // the last address it reached, 511 at least
};

enum class Finding { cut, invalid_range, data_memory, over_range };

// One message box: the findings of one rule, in the order of their lines.
enum class RangeRule { cut, flat, boot_area };
struct RangeReport {
    RangeRule rule = RangeRule::cut;
    std::vector<Finding> findings;
    AddressRange invalid; // where invalid_range was found
    bool without_data_flash = false; // the cut of a model without data flash, which has a title of its own
};

struct RangeVerdict {
    std::int32_t high = 0;
    std::vector<AddressRange> to_clear; // in this order, with 0
    std::vector<RangeReport> reports; // in this order; those without a finding are left out
    bool boot_area_rule = false; // the last rule applied was the one of the boot area
};

RangeVerdict range_rules(const RangeQuestion& question);

// Clears the ranges of a verdict, as far as they lie in the image.
void clear_ranges(std::span<std::uint8_t> image, const std::vector<AddressRange>& ranges);

} // namespace vrk
